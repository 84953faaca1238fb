#include "app/AppDelegate.h"
#include "app/ApplicationFlows.h"
#include "app/CommandLine.h"
#include "app/ScreenshotRun.h"
#include "app/SingleInstance.h"
#include "app/TitleImage.h"
#include "app/ToolkitStart.h"
#include "machine/MachineChoice.h"
#include "platform/desktop/DesktopRequests.h"
#include "platform/desktop/Display.h"
#include "platform/posix/ForeignHome.h"
#include "platform/posix/LateLibrary.h"
#include "platform/posix/MemoryThrift.h"
#include "platform/posix/StartAnew.h"
#include "platform/posix/TerminationSignals.h"
#include "state/AppState.h"
#include "ui/UserInterface.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

#include <chrono>
#include <cstdio>
#include <future>
#include <optional>
#include <string>
#include <vector>

using namespace swabby;

namespace {

constexpr std::chrono::seconds timeUntilRest(10);

int complain(const QString &words, int status)
{
    std::fprintf(stderr, "swabby: %s\n", qPrintable(words));
    return status;
}

QStringList argumentsOf(int argc, char *argv[])
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    return arguments;
}

// What the first window waits for, its library and the fonts, is brought in by a thread of its own.
std::future<void> bringIn(const CommandLine &commandLine)
{
    if (commandLine.isBackground)
        return {};
    return std::async(std::launch::async, [] {
        loadAhead(userInterfaceLibrary);
        QFontDatabase::families();
    });
}

// The load is a figure over time, and a second look, where it takes one, need not wait a minute.
void lookTwice(AppState &state)
{
    QObject::connect(&state, &AppState::applied, &state, [&state] {
        if (state.refreshesApplied() < refreshesUntilFigures(state.machine()))
            state.refresh();
    });
}

int runApplication(AppState &state, const CommandLine &commandLine, SingleInstance &instance,
                   const std::optional<FileIdentity> &programAtStart)
{
    lookTwice(state);
    ApplicationFlows flows(state);
    state.start();
    state.requestMainSection(commandLine.section);
    AppDelegate delegate(state, flows, commandLine.theme, programAtStart);
    delegate.applicationDidFinishLaunching();
    QObject::connect(&flows.notifications, &NotificationFlow::opened, &delegate,
                     &AppDelegate::openMainWindowAt);
    QObject::connect(&instance, &SingleInstance::asked, &delegate, [&delegate](const StartRequest &request) {
        if (request.section)
            delegate.openMainWindowAt(*request.section);
        else if (request.wantsWindow)
            delegate.openMainWindow();
    });
    const auto desktop = followDesktop(delegate.requests(commandLine.isBackground));
    QTimer::singleShot(timeUntilRest, &delegate, &giveMemoryBack);
    return QGuiApplication::exec();
}

int runSwabby(int argc, char *argv[], std::string *program)
{
    prepareProcess();
    const TerminationSignals signalsEndTheLoop;
    QString problem;
    const auto commandLine = parseCommandLine(argumentsOf(argc, argv), &problem);
    if (!commandLine)
        return complain(problem, 2);
    if (commandLine->wantsHelp || commandLine->wantsVersion) {
        const QString words = commandLine->wantsHelp
                                  ? commandLineHelp(chooseWords(commandLine->machineFolder))
                                  : QStringLiteral("swabby " SWABBY_VERSION "\n");
        std::fputs(qPrintable(words), stdout);
        return 0;
    }
    std::optional<MachineFolder> folder;
    if (commandLine->machineFolder)
        folder = {*commandLine->machineFolder, commandLine->runsTools,
                  [](const QString &words) { complain(words, 0); }};
    const std::shared_ptr<Machine> machine = chooseMachine(folder, &problem);
    if (machine == nullptr)
        return complain(problem, 2);
    if (commandLine->screenshotsFolder)
        prepareForScreenshots();
    else if (!hasDisplay())
        return complain(noDisplayText(), 1);

    int toolkitArgumentCount = 1;
    std::optional<ToolkitStart> start(std::in_place);
    QGuiApplication application(toolkitArgumentCount, argv);
    start.reset();
    *program = QFile::encodeName(QGuiApplication::applicationFilePath()).toStdString();
    QGuiApplication::setApplicationName(QStringLiteral("swabby"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Swabby"));
    QGuiApplication::setApplicationVersion(QStringLiteral(SWABBY_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.swabby.app"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setWindowIcon(applicationIcon());

    if (commandLine->screenshotsFolder) {
        AppState state(machine, Record::nothing);
        return runScreenshots(state, *commandLine);
    }
    problem = commandLine->machineFolder ? QString() : foreignHome(machine->places);
    if (!problem.isEmpty())
        return complain(problem, 1);
    const auto programAtStart = AppDelegate::programNow();
    SingleInstance instance(instancePath(commandLine->machineFolder));
    switch (instance.claim({!commandLine->isBackground, commandLine->section})) {
    case SingleInstance::Standing::handedOver:
        return 0;
    case SingleInstance::Standing::unanswered:
        return complain(QStringLiteral("Swabby already runs for this machine, but does not answer"), 1);
    case SingleInstance::Standing::first:
        break;
    }
    const std::future<void> bringingIn = bringIn(*commandLine);
    AppState state(machine, Record::everything);
    return runApplication(state, *commandLine, instance, programAtStart);
}

} // namespace

int main(int argc, char *argv[])
{
    std::string program;
    const int status = runSwabby(argc, argv, &program);
    if (status != AppDelegate::startAnewStatus)
        return status;
    // Somebody asked for the new one, so it shows itself.
    std::vector<std::string> arguments(argv + 1, argv + argc);
    std::erase(arguments, "--background");
    giveLocaleBackToEnvironment();
    startAnew(program, arguments);
    return complain(QString::fromStdString(program) + QStringLiteral(": ") + qt_error_string(), 1);
}
