#pragma once

#include "ui/UserInterface.h"

#include <QtCore/QObject>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace swabby {

class MainWindowView;
class Theme;

/// A main window with everything it stands on, in the order in which it must be let go.
struct OpenWindow {
    std::unique_ptr<MainWindowView> view;
    std::unique_ptr<QQmlEngine> engine;
    Theme *theme = nullptr; ///< the engine's
    std::unique_ptr<QQuickWindow> window;
};

/// Makes the window without showing it. Null when its views are broken; the log then says why.
std::unique_ptr<OpenWindow> openWindow(const UserInterfaceContext &context);

class WindowLibrary final : public UserInterface {
public:
    explicit WindowLibrary(UserInterfaceContext context);
    ~WindowLibrary() override;

    void openMainWindow() override;
    std::optional<QString> renderScreenshots(const QString &folder) override;

private:
    void dropClosedWindow();

    UserInterfaceContext m_context;
    std::unique_ptr<OpenWindow> m_open;
    QObject m_closing;
};

} // namespace swabby
