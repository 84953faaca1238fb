#pragma once

#include "platform/SecretStore.h"
#include "platform/StopToken.h"

#include <chrono>
#include <string>

namespace swabby {

/// The desktop's Secret Service. A locked one gives nothing and is not asked to unlock for reading; for
/// keeping a secret the person is at hand and may be asked, so that takes longer to give up. Without such a
/// service on the session's bus nothing is loaded for it.
class LinuxSecretStore final : public SecretStore {
public:
    struct Patience {
        std::chrono::milliseconds reading{3'000};
        std::chrono::milliseconds writing{60'000};
    };

    /// The bus as in DBUS_SESSION_BUS_ADDRESS; it has to be the session's own.
    LinuxSecretStore(std::string sessionBus, Patience patience, StopToken stop);

    std::optional<QString> read(const QString &account) override;
    bool write(const QString &value, const QString &account) override;
    void remove(const QString &account) override;

private:
    const std::string m_sessionBus;
    const Patience m_patience;
    const StopToken m_stop;
};

} // namespace swabby
