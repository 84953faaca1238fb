#include "ui/Screenshots.h"

#include "flows/ai/AssistantNotes.h"
#include "state/AppState.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/AskView.h"
#include "ui/qmltypes/IconStore.h"
#include "ui/qmltypes/MainWindowView.h"
#include "ui/qmltypes/PopoverView.h"
#include "ui/qmltypes/SettingsView.h"
#include "ui/qmltypes/Theme.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <chrono>
#include <functional>

namespace swabby {
namespace {

/// A picture of the main window, of what lasts or of a moment.
struct SectionPicture {
    const char *name;
    MainSection section;
    void (*prepare)(MainWindowView &view);
    QImage (*take)(QQuickWindow &window, MainWindowView &view) = nullptr;
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

// Drawn while the check stands there, which goes on with the next event: with three steps done, and once it
// says what it looks at, if it does before the next one is.
QImage takeInMidst(QQuickWindow &window, MainWindowView &view)
{
    CheckView &check = *view.check();
    QImage image;
    bool isOver = false;
    const auto isThere = [&] {
        const QList<CheckStep> steps = check.steps();
        isOver = isOver || !check.isScanning() || steps.at(3).isDone;
        return !isOver && steps.at(2).isDone;
    };
    const QObject looking;
    QObject::connect(&check, &CheckView::changed, &looking, [&] {
        if (isThere() && image.isNull())
            image = window.grabWindow();
    });
    QObject::connect(&check, &CheckView::lookingAtChanged, &looking, [&] {
        if (!isThere() || image.isNull())
            return;
        image = window.grabWindow();
        isOver = true;
    });
    check.run();
    waitUntil([&] { return isOver; });
    return image;
}

void waitForCheck(MainWindowView &view)
{
    waitUntil([&] { return view.check()->isScanning(); });
    waitUntil([&] { return !view.check()->isScanning(); });
}

// Nobody is asked for a picture, so it shows an invented answer.
void explainTheBusiest(MainWindowView &view)
{
    const QList<ProcessSample> &processes = view.state()->shown().processes;
    if (processes.isEmpty())
        return;
    view.coordinator()->explanation()->showExplanation(
        {processes.first()},
        QStringLiteral("%1 is an app you opened. It is working hard right now, which is normal while it "
                       "finishes something big. If you are not waiting for it, it is safe to quit; save "
                       "your work first.")
            .arg(processes.first().name),
        AssistantNotes::sentForExplanation());
    waitUntil([&] { return view.coordinator()->explanation()->knowsOrigin(); });
}

void askToQuitTheBusiest(MainWindowView &view)
{
    const QList<ProcessSample> &processes = view.state()->shown().processes;
    const auto busiest = std::find_if(processes.begin(), processes.end(),
                                      [](const ProcessSample &process) { return process.mayBeQuit(); });
    if (busiest == processes.end())
        return;
    view.quitProcess(busiest->pid);
    waitUntil([&] { return view.coordinator()->confirmation()->isOpen(); });
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

const SectionPicture sectionPictures[] = {
    {"overview", MainSection::overview, nullptr},
    {"health-detail", MainSection::overview,
     [](MainWindowView &view) { view.setProperty("showHealthDetail", true); }},
    {"speed", MainSection::speed, nullptr},
    {"speed-browsers", MainSection::speed, [](MainWindowView &view) { view.setProperty("speedView", 1); }},
    {"battery", MainSection::battery, nullptr},
    {"network", MainSection::network, nullptr},
    {"startup", MainSection::startup, nullptr},
    {"swabbyCheck-scanning", MainSection::swabbyCheck, nullptr, takeInMidst},
    {"swabbyCheck", MainSection::swabbyCheck, waitForCheck},
    {"confirm-quit", MainSection::speed, &askToQuitTheBusiest},
    {"explain", MainSection::speed, &explainTheBusiest},
    {"welcome", MainSection::overview, [](MainWindowView &view) { view.setProperty("showWelcome", true); }},
    {"storage", MainSection::storage, fillStorage},
    {"developer", MainSection::developer, scanDeveloperClutter},
    {"confirm-remove", MainSection::storage, askToCleanUp},
};

void showAnAnswer(AskView &view, const UserInterfaceContext &context)
{
    const QList<ProcessSample> &processes = context.state.processes();
    const QString name = processes.isEmpty() ? QString() : processes.first().name;
    view.showAnswer(
        view.suggestions().first(),
        {QStringLiteral("%1 is doing a lot of heavy work right now and taking most of your %2's "
                        "power, so everything else feels slower. If you are not waiting for it to "
                        "finish, quitting it will help straight away.")
             .arg(name, context.state.machine().words.computer),
         name, AssistantNotes::sentForAnswer()});
}

constexpr const char *settingsPictures[] = {"settings-general", "settings-notifications",
                                            "settings-thresholds", "settings-ai"};

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

template <typename View>
using Take = QImage (*)(QQuickWindow &window, View &view);

// Draws a new window, prepared first. No value when all went well, else what did not.
template <typename View, typename Prepare>
std::optional<QString> drawNew(MakeWindow<View> openNew, const UserInterfaceContext &context,
                               const char *name, const QString &folder, Prepare prepare,
                               Take<View> take = nullptr)
{
    QString problem;
    UserInterfaceContext own = context;
    own.cannotOpen = [&problem](const QString &why) { problem = why; };
    const auto open = openNew(own, {});
    if (open == nullptr)
        return problem;
    open->engine->theme->setStill(true);
    prepare(*open);
    QQuickWindow &window = *open->window;
    window.show();
    QCoreApplication::processEvents();
    waitUntil([&] { return !open->engine->icons->isBusy(); });
    const QImage taken = take == nullptr ? QImage() : take(window, *open->view);
    const QImage image = taken.isNull() ? window.grabWindow() : taken;
    const QString file = QDir(folder).filePath(QLatin1String(name) + QStringLiteral(".png"));
    if (!showsSomething(image))
        return QStringLiteral("%1 did not render").arg(QLatin1String(name));
    if (!image.save(file))
        return QStringLiteral("%1 cannot be written").arg(file);
    return std::nullopt;
}

// The panel alone, with the desktop to be seen at its round corners.
QImage takePanel(QQuickWindow &window, PopoverView &)
{
    // The picture has no desktop beneath it to blend with; what it has is black.
    window.setColor(window.property("fill").value<QColor>());
    const QImage whole = window.grabWindow();
    const double scale = static_cast<double>(whole.width()) / window.width();
    const int margin = qRound(window.property("margin").toDouble() * scale);
    const QImage panel = whole.copy(whole.rect().marginsRemoved(QMargins(margin, margin, margin, margin)));
    QImage image(panel.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(panel));
    const double radius = window.property("panelRadius").toDouble() * scale;
    painter.drawRoundedRect(image.rect(), radius, radius);
    return image;
}

} // namespace

std::optional<QString> renderScreenshots(const UserInterfaceContext &context, const QString &folder,
                                         const QSize &mainWindow)
{
    for (const SectionPicture &picture : sectionPictures) {
        const auto prepare = [&](OpenWindow<MainWindowView> &open) {
            MainWindowView &view = *open.view;
            if (!mainWindow.isEmpty())
                open.window->resize(mainWindow);
            view.setProperty("showWelcome", false);
            view.select(picture.section);
            if (picture.prepare != nullptr)
                picture.prepare(view);
        };
        if (auto problem = drawNew(&openMainWindow, context, picture.name, folder, prepare, picture.take))
            return problem;
    }
    for (const bool showsIssues : {false, true})
        if (auto problem = drawNew(
                &openPopover, context, showsIssues ? "popover-issues" : "popover", folder,
                [&](OpenWindow<PopoverView> &open) {
                    open.view->setProperty("isBlended", true);
                    open.view->setShowHealthDetail(showsIssues);
                },
                &takePanel))
            return problem;
    int tab = 0;
    for (const char *name : settingsPictures)
        if (auto problem =
                drawNew(&openSettingsWindow, context, name, folder,
                        [&](OpenWindow<SettingsView> &open) { open.view->setProperty("tab", tab++); }))
            return problem;
    return drawNew(&openAskWindow, context, "ask", folder,
                   [&context](OpenWindow<AskView> &open) { showAnAnswer(*open.view, context); });
}

} // namespace swabby
