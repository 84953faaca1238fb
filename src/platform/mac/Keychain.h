#pragma once

#include <QtCore/QByteArray>

#include <cstdint>
#include <optional>

namespace swabby {

/// The one generic password of Swabby's service for an account. Each call gives the keychain's own status, 0
/// for success, and may wait for an answer of the person's without an end.
struct KeychainReading {
    std::int32_t status = 0;
    std::optional<QByteArray> data = {};
};

/// The two answers that say something else than that it could not be had.
extern const std::int32_t keychainSuccess;
extern const std::int32_t keychainHasNone;

KeychainReading readKeychain(const QByteArray &account);
std::int32_t addToKeychain(const QByteArray &account, const QByteArray &data);
std::int32_t updateKeychain(const QByteArray &account, const QByteArray &data);
std::int32_t removeFromKeychain(const QByteArray &account);

} // namespace swabby
