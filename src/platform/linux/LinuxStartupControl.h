#pragma once

#include "platform/StartupControl.h"
#include "platform/StopToken.h"

#include <string>
#include <vector>

namespace swabby {

/// The user's own autostart entries and enabled units. An entry that is set aside and hid a system one of its
/// name leaves a hidden entry behind, or the system's would start in its place; a unit goes out of every
/// target that wants it.
class LinuxStartupControl final : public StartupControl {
public:
    struct Folders {
        std::string autostart;                    ///< the user's
        std::vector<std::string> systemAutostart; ///< most important first
        std::string units;                        ///< the user's, with the "*.wants" folders
        std::string userBus;                      ///< address; empty when there is no service manager to ask
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
    bool hidesSystemEntry(const QString &definitionPath) const;
    /// The links of that unit in all targets, the given one first.
    QStringList wantedFrom(const QString &link, const QString &ending) const;

    const Folders m_folders;
    const StopToken m_stop;
};

} // namespace swabby
