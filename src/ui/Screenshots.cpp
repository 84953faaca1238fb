#include "ui/Screenshots.h"

#include "ui/WindowLibrary.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/Theme.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <chrono>
#include <functional>

namespace swabby {
namespace {

struct Shot {
    const char *name;
    MainSection section;
    void (*prepare)(MainWindowView &view);
};

/// Searches of a machine that never end must not keep the pictures from being made.
constexpr auto longestWait = std::chrono::seconds(20);

/// Lets things happen until it is so, or that long.
void waitUntil(const std::function<bool()> &isSo)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(longestWait);
    while (!isSo() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void waitForSomeSteps(MainWindowView &view)
{
    waitUntil([&] { return !view.check()->isScanning() || view.check()->steps().at(2).isDone; });
    // A small machine is through with all of them at once: then the picture is of the first step.
    if (!view.check()->isScanning())
        view.check()->run();
}

void waitForCheck(MainWindowView &view)
{
    waitUntil([&] { return !view.check()->isScanning(); });
}

void fillStorage(MainWindowView &view)
{
    StorageView &storage = *view.storage();
    storage.scan(storage.duplicates());
    waitUntil([&] { return !storage.isScanning(); });
    for (RemovableList *list : {storage.quickClean(), storage.duplicates()})
        for (int row = 0; row < std::min(2, list->rows()->count()); ++row)
            storage.setSelected(
                list->rows()->data(list->rows()->index(row), Qt::UserRole).value<RemovableRowText>().id,
                true);
}

void askToCleanUp(MainWindowView &view)
{
    fillStorage(view);
    view.storage()->cleanUp();
}

void scanDeveloperClutter(MainWindowView &view)
{
    view.developer()->scan();
    waitUntil([&] { return !view.developer()->isScanning(); });
}

const Shot shots[] = {
    {"overview", MainSection::overview, nullptr},
    {"health-detail", MainSection::overview,
     [](MainWindowView &view) { view.setProperty("showHealthDetail", true); }},
    {"speed", MainSection::speed, nullptr},
    {"speed-browsers", MainSection::speed, [](MainWindowView &view) { view.setProperty("speedView", 1); }},
    {"battery", MainSection::battery, nullptr},
    {"network", MainSection::network, nullptr},
    {"startup", MainSection::startup, nullptr},
    {"swabbyCheck-scanning", MainSection::swabbyCheck, waitForSomeSteps},
    {"swabbyCheck", MainSection::swabbyCheck, waitForCheck},
    {"storage", MainSection::storage, fillStorage},
    {"developer", MainSection::developer, scanDeveloperClutter},
    {"confirm-remove", MainSection::storage, askToCleanUp},
};

// A window that was never drawn is all one colour.
bool showsSomething(const QImage &image)
{
    if (image.isNull())
        return false;
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); y += 7)
        for (int x = 0; x < image.width(); x += 7)
            if (image.pixel(x, y) != first)
                return true;
    return false;
}

} // namespace

std::optional<QString> renderScreenshots(const UserInterfaceContext &context, const QString &folder)
{
    for (const Shot &shot : shots) {
        const auto open = openMainWindow(context);
        if (open == nullptr)
            return QStringLiteral("the window could not be made");
        open->engine->theme->setStill(true);
        open->window->show();
        open->view->select(shot.section);
        if (shot.prepare != nullptr)
            shot.prepare(*open->view);
        QCoreApplication::processEvents();
        const QImage image = open->window->grabWindow();
        const QString file = QDir(folder).filePath(QLatin1String(shot.name) + QStringLiteral(".png"));
        if (!showsSomething(image))
            return QStringLiteral("%1 did not render").arg(QLatin1String(shot.name));
        if (!image.save(file))
            return QStringLiteral("%1 cannot be written").arg(file);
    }
    return std::nullopt;
}

} // namespace swabby
