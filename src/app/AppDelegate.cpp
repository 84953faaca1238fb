#include "app/AppDelegate.h"

#include "app/ApplicationFlows.h"
#include "app/StatusItemController.h"
#include "platform/desktop/Display.h"
#include "platform/posix/LateLibrary.h"
#include "settings/Settings.h"
#include "state/AppState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace swabby {
namespace {

constexpr std::chrono::seconds panelPatience(5);

bool isTitledWindow(const QWindow *window)
{
    return window->isVisible() && (window->type() == Qt::Window || window->type() == Qt::Dialog) &&
           !window->flags().testFlag(Qt::FramelessWindowHint);
}

// The windows are not asked: without a place in the panel the last one refuses to close.
void endProgram()
{
    QCoreApplication::exit();
}

// Also before the event loop has begun.
void leaveWith(int status)
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [status] { QCoreApplication::exit(status); }, Qt::QueuedConnection);
}

void endWithProblem(const QString &why)
{
    std::fprintf(stderr, "swabby: %s\n", qPrintable(why));
    leaveWith(1);
}

} // namespace

std::optional<FileIdentity> AppDelegate::programNow()
{
    return FileIdentity::of(QFile::encodeName(QCoreApplication::applicationFilePath()).toStdString());
}

AppDelegate::AppDelegate(AppState &state, ApplicationFlows &flows, std::optional<ThemeChoice> theme,
                         std::optional<FileIdentity> programAtStart)
    : m_state(state), m_flows(flows), m_theme(theme), m_programAtStart(programAtStart)
{
    connect(&state, &AppState::applied, this, &AppDelegate::followStanding);
}

AppDelegate::~AppDelegate() = default;

// In the windows' library, which is loaded for it.
template <typename... Arguments>
std::function<void(Arguments...)> AppDelegate::inWindows(void (UserInterface::*open)(Arguments...))
{
    return [this, open](Arguments... arguments) {
        comeToFront();
        if (UserInterface *windows = userInterface())
            (windows->*open)(arguments...);
        else
            goOnWithoutWindows();
    };
}

void AppDelegate::applicationDidFinishLaunching()
{
    syncActivationPolicy();
    const StatusItemController::Actions actions = {
        .openMainWindow = inWindows(&UserInterface::openMainWindow),
        .openAskWindow = inWindows(&UserInterface::openAskWindow),
        .openSettingsWindow = inWindows(&UserInterface::openSettingsWindow),
        .togglePopover = inWindows(&UserInterface::togglePopover),
        .toggleItemMenu = inWindows(&UserInterface::toggleItemMenu),
        .quit = endProgram};
    m_statusItemController = std::make_unique<StatusItemController>(m_state, actions, makeTrayItems());
    QCoreApplication::instance()->installEventFilter(this);
}

void AppDelegate::begin(bool isInBackground)
{
    if (!isInBackground)
        return openMainWindow();
    // A panel may come up a little later than what the desktop starts with it.
    QTimer::singleShot(panelPatience, this, [this] {
        if (panelPlace() != TrayItem::Place::there)
            openMainWindow();
    });
}

DesktopRequests AppDelegate::requests(bool isInBackground)
{
    DesktopRequests requests = {
        .started = [this, isInBackground](bool isAtLogin) { begin(isInBackground || isAtLogin); },
        .openedAgain =
            [this] {
                if (!hasTitledWindow())
                    openMainWindow();
            },
        .chosen = [this](TrayCommand command) { m_statusItemController->follow(command); },
        .sectionChosen = [this](int section) { openMainWindowAt(allSections.at(std::size_t(section))); }};
    for (const MainSection section : allSections)
        requests.sections.append(sectionTitle(section));
    return requests;
}

TrayItem::Place AppDelegate::panelPlace() const
{
    return m_statusItemController ? m_statusItemController->place() : TrayItem::Place::unknown;
}

void AppDelegate::openMainWindow()
{
    inWindows (&UserInterface::openMainWindow)();
}

void AppDelegate::openSettingsWindow()
{
    inWindows (&UserInterface::openSettingsWindow)();
}

void AppDelegate::openMainWindowAt(MainSection section)
{
    m_state.requestMainSection(section);
    openMainWindow();
}

bool AppDelegate::hasTitledWindow() const
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), isTitledWindow);
}

void AppDelegate::syncActivationPolicy()
{
    const bool isShown =
        hasTitledWindow() || Settings(*m_state.machine().settings).value(setting<"showInDock">);
    m_state.machine().dock->setActivationPolicy(isShown ? ActivationPolicy::regular
                                                        : ActivationPolicy::accessory);
}

UserInterface *AppDelegate::userInterface()
{
    if (m_userInterface != nullptr || standing() != Standing())
        return m_userInterface.get();
    const ThemeChoice stored = Settings(*m_state.machine().settings).value(setting<"theme">);
    UserInterfaceContext context = m_flows.windowContext(m_state, m_theme.value_or(stored));
    context.panelPlace = [this] { return panelPlace(); };
    context.quit = endProgram;
    context.standing = [this] { return m_standing; };
    context.startAnew = [this] { startAnew(); };
    context.cannotOpen = endWithProblem;
    context.dockChoiceChanged = [this] { syncActivationPolicy(); };
    if (const auto make = lateFunction<UserInterfaceEntry>(userInterfaceLibrary, userInterfaceEntryName))
        m_userInterface.reset(make(context));
    return m_userInterface.get();
}

Standing AppDelegate::standing() const
{
    const auto now = programNow();
    // Of another version the libraries may lie beside these.
    const bool isSameProgram = !m_programAtStart || (now && now->isSameThing(*m_programAtStart));
    if (!wasReplaced() && isSameProgram)
        return {};
    if (now)
        return {QStringLiteral("Swabby was updated while it ran. Start it anew to use the new version."),
                true};
    return {QStringLiteral("Swabby was removed from this computer. It ends when you quit it."), false};
}

void AppDelegate::followStanding()
{
    const Standing now = standing();
    if (now == m_standing)
        return;
    m_standing = now;
    std::fprintf(stderr, "swabby: %s\n", qPrintable(now.text));
    // Nothing on a described Mac has anything to do with it, and a snooze is for all.
    const Machine &machine = m_state.machine();
    const bool isSnoozed = m_state.snoozedUntil() && *m_state.snoozedUntil() > machine.clock->now();
    if (now.canStartAnew && !isSnoozed && machine.places.root.isEmpty())
        m_state.machine().notifier->post(
            {QStringLiteral("Swabby was updated"), QStringLiteral("Open this to start the new version.")},
            [self = QPointer(this)] {
                if (self)
                    self->startAnew();
            });
}

void AppDelegate::startAnew()
{
    leaveWith(startAnewStatus);
}

// Nothing is under way while no window was ever opened, so the installed Swabby opens what was asked for.
void AppDelegate::goOnWithoutWindows()
{
    const Standing now = standing();
    if (now.canStartAnew)
        startAnew();
    else
        endWithProblem(now.text.isEmpty() ? QStringLiteral("its windows cannot be loaded")
                                          : now.text.chopped(1));
}

bool AppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && qobject_cast<QWindow *>(watched) != nullptr &&
        press(*static_cast<QKeyEvent *>(event)))
        return true;
    const bool isAboutAWindow = event->type() == QEvent::Close || event->type() == QEvent::Show;
    if (isAboutAWindow && qobject_cast<QWindow *>(watched) != nullptr)
        // Later, so that a closing window is already gone.
        QMetaObject::invokeMethod(this, &AppDelegate::syncActivationPolicy, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

// What works in every window.
bool AppDelegate::press(const QKeyEvent &key)
{
    if (key.keyCombination() == (Qt::CTRL | Qt::Key_Q))
        endProgram();
    else if (key.keyCombination() == (Qt::CTRL | Qt::Key_Comma))
        openSettingsWindow();
    else
        return false;
    return true;
}

} // namespace swabby
