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
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <chrono>
#include <functional>

namespace swabby {
namespace {

/// A picture of the main window.
struct SectionPicture {
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
    waitUntil([&] { return view.check()->isScanning(); });
    waitUntil([&] { return !view.check()->isScanning() || view.check()->steps().at(2).isDone; });
    // A small machine is through with all of them at once: then the picture is of the first step.
    if (!view.check()->isScanning())
        view.check()->run();
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
    {"swabbyCheck-scanning", MainSection::swabbyCheck, waitForSomeSteps},
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

// Draws the window as it stands. No value when all went well, else what did not.
std::optional<QString> draw(QQuickWindow &window, const char *name, const QString &folder)
{
    window.show();
    QCoreApplication::processEvents();
    if (const IconStore *icons = IconStore::of(qmlEngine(&window)))
        waitUntil([icons] { return !icons->isBusy(); });
    const QImage image = window.grabWindow();
    const QString file = QDir(folder).filePath(QLatin1String(name) + QStringLiteral(".png"));
    if (!showsSomething(image))
        return QStringLiteral("%1 did not render").arg(QLatin1String(name));
    if (!image.save(file))
        return QStringLiteral("%1 cannot be written").arg(file);
    return std::nullopt;
}

// The same for a new window, prepared first.
template <typename View, typename Prepare>
std::optional<QString> drawNew(MakeWindow<View> openNew, const UserInterfaceContext &context,
                               const char *name, const QString &folder, Prepare prepare)
{
    QString problem;
    UserInterfaceContext own = context;
    own.cannotOpen = [&problem](const QString &why) { problem = why; };
    const auto open = openNew(own, {});
    if (open == nullptr)
        return problem;
    open->engine->theme->setStill(true);
    prepare(*open->view);
    return draw(*open->window, name, folder);
}

} // namespace

std::optional<QString> renderScreenshots(const UserInterfaceContext &context, const QString &folder)
{
    for (const SectionPicture &picture : sectionPictures) {
        const auto prepare = [&picture](MainWindowView &view) {
            view.setProperty("showWelcome", false);
            view.select(picture.section);
            if (picture.prepare != nullptr)
                picture.prepare(view);
        };
        if (auto problem = drawNew(&openMainWindow, context, picture.name, folder, prepare))
            return problem;
    }
    for (const bool showsIssues : {false, true})
        if (auto problem = drawNew(&openPopover, context, showsIssues ? "popover-issues" : "popover", folder,
                                   [&](PopoverView &view) { view.setShowHealthDetail(showsIssues); }))
            return problem;
    int tab = 0;
    for (const char *name : settingsPictures)
        if (auto problem = drawNew(&openSettingsWindow, context, name, folder,
                                   [&](SettingsView &view) { view.setProperty("tab", tab++); }))
            return problem;
    return drawNew(&openAskWindow, context, "ask", folder,
                   [&context](AskView &view) { showAnAnswer(view, context); });
}

} // namespace swabby
