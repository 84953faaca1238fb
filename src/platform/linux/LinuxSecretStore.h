#pragma once

#include "platform/SecretStore.h"
#include "platform/StopToken.h"

#include <chrono>
#include <string>

namespace swabby {

/// The desktop's Secret Service. For keeping a secret, and for reading one that they wait for, the person is
/// at hand and may be asked to unlock it, so that takes longer to give up. Without such a service on the
/// session's bus nothing is loaded for it.
class LinuxSecretStore final : public SecretStore {
public:
    struct Patience {
        std::chrono::milliseconds reading{3'000};
        std::chrono::milliseconds asking{40'000}; ///< for a password, while somebody waits for an answer
        std::chrono::milliseconds writing{60'000};
    };

    /// The bus as in DBUS_SESSION_BUS_ADDRESS; it has to be the session's own.
    LinuxSecretStore(std::string sessionBus, Patience patience, StopToken stop);

    SecretReading read(const QString &account, Unlocking unlocking, const StopToken &stop) override;
    bool write(const QString &value, const QString &account) override;
    void remove(const QString &account) override;

private:
    const std::string m_sessionBus;
    const Patience m_patience;
    const StopToken m_stop;
};

} // namespace swabby
