#pragma once

#include "platform/StopToken.h"

#include <QtCore/QString>

#include <optional>

namespace swabby {

/// The service every secret of Swabby's is filed under.
inline constexpr auto secretService = "com.swabby.app.secrets";

/// Whether the store may ask the person for its password: only when they wait for what the secret is for.
enum class Unlocking { never, mayAsk };

/// What came of asking for a secret.
struct SecretReading {
    /// Silent: it did not answer in time. What it keeps is then unknown, as in a locked one.
    enum class Keeper { open, locked, silent };

    std::optional<QString> value; ///< none when there is none, it is no text, or it is not given
    Keeper keeper = Keeper::open;

    bool operator==(const SecretReading &) const = default;
};

/// The system's own keeper of passwords, a secret for each account. It may be locked, slow or absent: every
/// call waits a bounded time and then counts as refused. Background work only.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// The wait ends with the token's stop, too.
    virtual SecretReading read(const QString &account, Unlocking unlocking, const StopToken &stop) = 0;
    /// Adds or updates the account's one secret. False when it could not be kept; it is then kept nowhere.
    virtual bool write(const QString &value, const QString &account) = 0;
    /// A secret that is not there is no failure.
    virtual void remove(const QString &account) = 0;
};

} // namespace swabby
