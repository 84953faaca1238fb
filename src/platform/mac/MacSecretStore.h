#pragma once

#include "platform/SecretStore.h"
#include "platform/macparts/OneQuestion.h"

#include <chrono>

namespace swabby {

/// The login keychain: one generic password for each account. The system may ask the person whether Swabby
/// may have it, so every call is waited for only so long, and asks once the one before was answered.
class MacSecretStore final : public SecretStore {
public:
    struct Patience {
        std::chrono::milliseconds reading{3'000};
        std::chrono::milliseconds asking{40'000}; ///< while the person is at hand
        std::chrono::milliseconds writing{60'000};
    };

    MacSecretStore(Patience patience, StopToken stop) : m_patience(patience), m_stop(std::move(stop)) {}

    SecretReading read(const QString &account, Unlocking unlocking, const StopToken &stop) override;
    bool write(const QString &value, const QString &account) override;
    void remove(const QString &account) override;

private:
    const Patience m_patience;
    const StopToken m_stop;
    OneQuestion m_question;
};

} // namespace swabby
