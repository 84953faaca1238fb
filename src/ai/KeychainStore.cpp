#include "ai/KeychainStore.h"

#include "platform/posix/MemoryPrivacy.h"

namespace swabby {

SecretReading KeychainStore::read(SecretStore &store, const QString &account, Unlocking unlocking,
                                  const StopToken &stop)
{
    keepMemoryPrivate();
    return store.read(account, unlocking, stop);
}

bool KeychainStore::write(SecretStore &store, const QString &value, const QString &account)
{
    keepMemoryPrivate();
    return store.write(value, account);
}

void KeychainStore::erase(SecretStore &store, const QString &account)
{
    store.remove(account);
}

} // namespace swabby
