#include "platform/mac/Keychain.h"

#include "platform/SecretStore.h"
#include "platform/mac/Owned.h"

#include <Security/Security.h>

#include <utility>
#include <vector>

namespace swabby {
namespace {

using Attribute = std::pair<CFTypeRef, CFTypeRef>;

Owned<CFDataRef> bytes(const QByteArray &data)
{
    return Owned<CFDataRef>(
        CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(data.constData()), data.size()));
}

Owned<CFDictionaryRef> dictionary(const std::vector<Attribute> &attributes)
{
    std::vector<const void *> keys;
    std::vector<const void *> values;
    for (const auto &[key, value] : attributes) {
        keys.push_back(key);
        values.push_back(value);
    }
    return Owned<CFDictionaryRef>(
        CFDictionaryCreate(kCFAllocatorDefault, keys.data(), values.data(), static_cast<CFIndex>(keys.size()),
                           &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

/// What names the item, and what else is said of it.
Owned<CFDictionaryRef> item(const QByteArray &account, std::vector<Attribute> more = {})
{
    const Owned<CFStringRef> name(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(account.constData()),
                                account.size(), kCFStringEncodingUTF8, false));
    const Owned<CFStringRef> service(
        CFStringCreateWithCString(kCFAllocatorDefault, secretService, kCFStringEncodingUTF8));
    more.insert(more.begin(), {{kSecClass, kSecClassGenericPassword},
                               {kSecAttrService, service.get()},
                               {kSecAttrAccount, name.get()}});
    return dictionary(more);
}

} // namespace

const std::int32_t keychainSuccess = errSecSuccess;
const std::int32_t keychainHasNone = errSecItemNotFound;

KeychainReading readKeychain(const QByteArray &account)
{
    CFTypeRef found = nullptr;
    const auto query = item(account, {{kSecReturnData, kCFBooleanTrue}, {kSecMatchLimit, kSecMatchLimitOne}});
    const OSStatus status = SecItemCopyMatching(query.get(), &found);
    const Owned<CFTypeRef> owned(found);
    if (status != errSecSuccess || found == nullptr || CFGetTypeID(found) != CFDataGetTypeID())
        return {.status = status};
    const auto data = static_cast<CFDataRef>(found);
    return {status,
            QByteArray(reinterpret_cast<const char *>(CFDataGetBytePtr(data)), CFDataGetLength(data))};
}

std::int32_t addToKeychain(const QByteArray &account, const QByteArray &data)
{
    const auto value = bytes(data);
    const auto added = item(
        account, {{kSecValueData, value.get()}, {kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlock}});
    return SecItemAdd(added.get(), nullptr);
}

std::int32_t updateKeychain(const QByteArray &account, const QByteArray &data)
{
    const auto value = bytes(data);
    return SecItemUpdate(item(account).get(), dictionary({{kSecValueData, value.get()}}).get());
}

std::int32_t removeFromKeychain(const QByteArray &account)
{
    return SecItemDelete(item(account).get());
}

} // namespace swabby
