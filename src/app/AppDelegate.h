#pragma once

#include "app/CommandLine.h"
#include "health/MainSection.h"
#include "platform/FileIdentity.h"
#include "platform/desktop/DesktopRequests.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>

class QKeyEvent;

namespace swabby {

class AppState;
struct ApplicationFlows;
class StatusItemController;

/// Starts what the application shows: its place in the dock, its item in the menu bar, its windows.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// Without a theme the windows follow the setting.
    /// The program's file as it lies there at this moment.
    static std::optional<FileIdentity> programNow();

    /// With the program's file from before anybody else could ask anything of this one.
    AppDelegate(AppState &state, ApplicationFlows &flows, std::optional<ThemeChoice> theme,
                std::optional<FileIdentity> programAtStart = programNow());
    ~AppDelegate() override;

    void applicationDidFinishLaunching();
    /// Opens the main window, unless the login started the program: then only where no panel comes up.
    void begin(bool isInBackground);
    /// What the desktop may ask of it, for as long as it lives.
    DesktopRequests requests(bool isInBackground);
    /// Whether the item in the menu bar is there, so that no window need be.
    TrayItem::Place panelPlace() const;
    /// Opens the main window, or brings it to the front.
    void openMainWindow();
    /// The same, and shows that section there.
    void openMainWindowAt(MainSection section);
    void openSettingsWindow();
    /// Ends the event loop with startAnewStatus, for the caller to begin the Swabby that is installed now.
    void startAnew();
    static constexpr int startAnewStatus = 85;
    /// In the dock while a titled window is open, else as the setting says.
    void syncActivationPolicy();

    /// The windows' library, loaded now at the latest. Null when it cannot be loaded; the log says why.
    UserInterface *userInterface();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    template <typename... Arguments>
    std::function<void(Arguments...)> inWindows(void (UserInterface::*open)(Arguments...));
    bool press(const QKeyEvent &key);
    bool hasTitledWindow() const;
    Standing standing() const;
    void followStanding();
    void goOnWithoutWindows();

    AppState &m_state;
    ApplicationFlows &m_flows;
    std::optional<ThemeChoice> m_theme;
    const std::optional<FileIdentity> m_programAtStart;
    Standing m_standing;
    std::unique_ptr<StatusItemController> m_statusItemController;
    std::unique_ptr<UserInterface> m_userInterface;
};

} // namespace swabby
