#include "app/AppDelegate.h"

#include "app/ApplicationFlows.h"
#include "app/StatusItemController.h"
#include "platform/posix/LateLibrary.h"
#include "settings/Settings.h"
#include "state/AppState.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>

#include <algorithm>

namespace swabby {
namespace {

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

} // namespace

AppDelegate::AppDelegate(AppState &state, ApplicationFlows &flows, std::optional<ThemeChoice> theme)
    : m_state(state), m_flows(flows), m_theme(theme)
{
}

AppDelegate::~AppDelegate() = default;

// In the windows' library, which is loaded for it.
template <typename... Arguments>
std::function<void(Arguments...)> AppDelegate::inWindows(void (UserInterface::*open)(Arguments...))
{
    return [this, open](Arguments... arguments) {
        if (UserInterface *windows = userInterface())
            (windows->*open)(arguments...);
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

void AppDelegate::syncActivationPolicy()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const bool isOpen = std::any_of(windows.begin(), windows.end(), isTitledWindow);
    const bool isShown = isOpen || Settings(*m_state.machine().settings).value(setting<"showInDock">);
    m_state.machine().dock->setActivationPolicy(isShown ? ActivationPolicy::regular
                                                        : ActivationPolicy::accessory);
}

UserInterface *AppDelegate::userInterface()
{
    if (m_userInterface != nullptr)
        return m_userInterface.get();
    const ThemeChoice stored = Settings(*m_state.machine().settings).value(setting<"theme">);
    UserInterfaceContext context = m_flows.windowContext(m_state, m_theme.value_or(stored));
    context.panelPlace = [this] { return panelPlace(); };
    context.quit = endProgram;
    context.dockChoiceChanged = [this] { syncActivationPolicy(); };
    if (const auto make = lateFunction<UserInterfaceEntry>(userInterfaceLibrary, userInterfaceEntryName))
        m_userInterface.reset(make(context));
    return m_userInterface.get();
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
