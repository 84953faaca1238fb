#include "ai/KeychainStore.h"

#include "platform/posix/MemoryPrivacy.h"

namespace swabby {

std::optional<QString> KeychainStore::read(SecretStore &store, const QString &account)
{
    keepMemoryPrivate();
    return store.read(account);
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
