#pragma once

#include "platform/BackgroundWork.h"
#include "ui/UserInterface.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>

#include <memory>

namespace swabby {

class AskView;
class IconStore;
class MainWindowView;
class PopoverPresenter;
class PopoverView;
class SettingsView;
class Theme;

/// What all windows stand on; alive while one of them is.
struct WindowEngine {
    explicit WindowEngine(ThemeChoice choice);

    /// Tells where the icons of programs come from; the same for every window of the engine.
    void findIcons(const UserInterfaceContext &context);

    QQmlEngine engine;
    Theme *theme = nullptr;     ///< the engine's
    IconStore *icons = nullptr; ///< the engine's
};

/// A window with what it shows, in the order in which it must be let go.
template <typename View>
struct OpenWindow {
    std::shared_ptr<WindowEngine> engine;
    std::unique_ptr<View> view;
    std::unique_ptr<QQuickWindow> window;
};

/// Makes the window of that QML file without showing it; its property "view" is the view. Null when its views
/// are broken; the log then says why.
std::unique_ptr<QQuickWindow> makeWindow(WindowEngine &engine, const QString &file, QObject *view);

/// Makes a window of each kind. The view is made from the context alone.
template <typename View>
std::unique_ptr<OpenWindow<View>> openWindow(const UserInterfaceContext &context, const QString &file,
                                             std::shared_ptr<WindowEngine> engine = {})
{
    auto open = std::make_unique<OpenWindow<View>>();
    open->engine = engine ? std::move(engine) : std::make_shared<WindowEngine>(context.theme);
    open->engine->findIcons(context);
    open->view = std::make_unique<View>(context);
    open->window = makeWindow(*open->engine, file, open->view.get());
    return open->window ? std::move(open) : nullptr;
}

std::unique_ptr<OpenWindow<MainWindowView>> openMainWindow(const UserInterfaceContext &context,
                                                           std::shared_ptr<WindowEngine> engine = {});
std::unique_ptr<OpenWindow<AskView>> openAskWindow(const UserInterfaceContext &context,
                                                   std::shared_ptr<WindowEngine> engine = {});
std::unique_ptr<OpenWindow<SettingsView>> openSettingsWindow(const UserInterfaceContext &context,
                                                             std::shared_ptr<WindowEngine> engine = {});
std::unique_ptr<OpenWindow<PopoverView>> openPopover(const UserInterfaceContext &context,
                                                     std::shared_ptr<WindowEngine> engine = {});
std::unique_ptr<OpenWindow<PopoverView>> openItemMenu(const UserInterfaceContext &context,
                                                      std::shared_ptr<WindowEngine> engine = {});

class WindowLibrary final : public UserInterface {
public:
    explicit WindowLibrary(UserInterfaceContext context);
    ~WindowLibrary() override;

    void openMainWindow() override;
    void openAskWindow() override;
    void openSettingsWindow() override;
    void togglePopover(const QRect &statusItem) override;
    void toggleItemMenu(const QRect &statusItem) override;
    std::optional<QString> renderScreenshots(const QString &folder) override;

private:
    /// The engine of the windows that are open, or a new one.
    std::shared_ptr<WindowEngine> sharedEngine();
    template <typename View>
    void present(std::unique_ptr<OpenWindow<View>> &open,
                 std::unique_ptr<OpenWindow<View>> (*make)(const UserInterfaceContext &,
                                                           std::shared_ptr<WindowEngine>));
    void toggle(std::unique_ptr<PopoverPresenter> &presenter,
                std::unique_ptr<OpenWindow<PopoverView>> (*make)(const UserInterfaceContext &,
                                                                 std::shared_ptr<WindowEngine>),
                const QRect &statusItem);

    UserInterfaceContext m_context;
    std::weak_ptr<WindowEngine> m_engine;
    std::shared_ptr<WindowEngine> m_kept; ///< for a while after a window has been closed
    QTimer m_keeping;
    std::unique_ptr<OpenWindow<MainWindowView>> m_main;
    std::unique_ptr<OpenWindow<AskView>> m_ask;
    std::unique_ptr<OpenWindow<SettingsView>> m_settings;
    std::unique_ptr<PopoverPresenter> m_popover;
    std::unique_ptr<PopoverPresenter> m_itemMenu;
    QObject m_closing;
    QTimer m_settling; ///< making windows and pages frees a lot in small pieces; ends when all is at rest
    BackgroundWork m_errands; // outlives the windows: closing one waits for nothing
};

} // namespace swabby
