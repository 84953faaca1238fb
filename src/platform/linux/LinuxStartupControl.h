#pragma once

#include "platform/StartupControl.h"
#include "platform/StopToken.h"
#include "platform/linux/LinuxLoginService.h"

#include <string>
#include <vector>

namespace swabby {

/// The user's own autostart entries and enabled units, and the system's autostart entries. One of the
/// system's is turned off by a hidden copy among the user's, never over something there, and on again by
/// removing that; a copy that somebody has changed since stays and is no longer hidden. An entry of the
/// user's that is set aside and hid a system one of its name leaves such a copy behind, or the system's would
/// start in its place; a unit goes out of every target that wants it. Swabby's own entry is the login
/// service's.
class LinuxStartupControl final : public StartupControl {
public:
    struct Folders {
        std::string autostart;                    ///< the user's
        std::vector<std::string> systemAutostart; ///< most important first
        std::string units;                        ///< the user's, with the "*.wants" folders
        std::string userBus;                      ///< address; empty when there is no service manager to ask
        std::string ownProgram{};                 ///< what Swabby's own entry starts
        std::string home{};
        std::string desktops{}; ///< colon-separated names of the running one
    };

    LinuxStartupControl(Folders folders, StopToken stop);

    /// Stops a unit. An autostart entry started a program of the user's, which may hold unsaved work: it goes
    /// on.
    void endJob(const QString &label, const QString &definitionPath) override;
    void beginJob(const QString &definitionPath) override;
    bool setAside(const QString &definitionPath) override;
    bool putBack(const QString &definitionPath) override;
    std::vector<StartupEntry> setAsideEntries() override;

private:
    bool isUnit(const QString &definitionPath) const;
    bool isSwabby(const QString &definitionPath) const;
    bool isSystemEntry(const QString &definitionPath) const;
    /// The system's entry of that file name; empty when there is none.
    QString systemEntry(const QString &name) const;
    /// The user's entry that takes its place.
    QString overrideOf(const QString &systemEntry) const;
    bool turnOff(const QString &systemEntry) const;
    bool turnOn(const QString &systemEntry) const;
    void addAutostart(std::vector<StartupEntry> &entries) const;
    void addUnits(std::vector<StartupEntry> &entries) const;
    /// The links of that unit in all targets, the given one first.
    QStringList wantedFrom(const QString &link, const QString &ending) const;

    const Folders m_folders;
    const StopToken m_stop;
    LinuxLoginService m_login;
};

} // namespace swabby
