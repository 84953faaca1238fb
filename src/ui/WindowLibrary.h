#pragma once

#include "ui/PageMaking.h"
#include "ui/UserInterface.h"
#include "ui/WindowPlaces.h"

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
    explicit WindowEngine(const UserInterfaceContext &context);

    PageMaking making;
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

/// Makes a window of one kind without showing it, on an engine of its own when it is given none. Null when
/// its QML files are broken; the log then says why.
template <typename View>
using MakeWindow = std::unique_ptr<OpenWindow<View>>(const UserInterfaceContext &context,
                                                     std::shared_ptr<WindowEngine> engine);
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
    std::optional<QString> renderScreenshots(const QString &folder, const QSize &mainWindow) override;

private:
    /// The engine of the windows that are open, or a new one.
    std::shared_ptr<WindowEngine> sharedEngine();
    template <typename View>
    void present(std::unique_ptr<OpenWindow<View>> &open, MakeWindow<View> *make, const char *name);
    void followTheme();
    void toggle(std::unique_ptr<PopoverPresenter> &presenter, MakeWindow<PopoverView> *make,
                const QRect &statusItem);

    UserInterfaceContext m_context;
    ThemeChoice m_storedTheme;
    WindowPlaces m_places;
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
};

} // namespace swabby
