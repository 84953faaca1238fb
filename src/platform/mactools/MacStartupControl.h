#pragma once

#include "platform/Places.h"
#include "platform/Shell.h"
#include "platform/StartupControl.h"

namespace swabby {

/// The user's own launch agents.
class MacStartupControl final : public StartupControl {
public:
    MacStartupControl(Shell &shell, Places places) : m_shell(shell), m_places(std::move(places)) {}

    void endJob(const QString &label, const QString &definitionPath) override;
    void beginJob(const QString &definitionPath) override;
    bool setAside(const QString &definitionPath) override;
    bool putBack(const QString &definitionPath) override;
    std::vector<StartupEntry> setAsideEntries() override;

private:
    Shell &m_shell;
    Places m_places;
};

} // namespace swabby
