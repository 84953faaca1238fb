#pragma once

#include <QtCore/QString>

#include <optional>

namespace swabby {

/// The service every secret of Swabby's is filed under.
inline constexpr auto secretService = "com.swabby.app.secrets";

/// The system's own keeper of passwords, a secret for each account. It may be locked, slow or absent: every
/// call waits a bounded time and then counts as refused. Background work only.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// No value when there is none, it is no text, or the store does not give it. Never asks the person to
    /// unlock anything.
    virtual std::optional<QString> read(const QString &account) = 0;
    /// Adds or updates the account's one secret. False when it could not be kept; it is then kept nowhere.
    virtual bool write(const QString &value, const QString &account) = 0;
    /// A secret that is not there is no failure.
    virtual void remove(const QString &account) = 0;
};

} // namespace swabby
