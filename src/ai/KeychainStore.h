#pragma once

#include "platform/SecretStore.h"

/// The person's secrets, each under the name of its account. They may wait for the system's store: background
/// work only. From the first call on, nobody else can read this process's memory.
namespace swabby::KeychainStore {

/// The account of the key for the model.
inline constexpr auto apiKeyAccount = "anthropicAPIKey";

SecretReading read(SecretStore &store, const QString &account, Unlocking unlocking = Unlocking::never,
                   const StopToken &stop = {});
/// False when it could not be kept; it is then kept nowhere.
bool write(SecretStore &store, const QString &value, const QString &account);
void erase(SecretStore &store, const QString &account);

} // namespace swabby::KeychainStore
