// The C interfaces of a Mac, answered by a StandInMac.
#include "StandIns.h"

#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/ps/IOPowerSources.h>
#include <Security/Security.h>
#include <mach/mach.h>
#include <sys/sysctl.h>

#include <cstring>
#include <utility>

StandInMac &mac()
{
    static StandInMac standIn;
    return standIn;
}

std::vector<std::string> StandInMac::news()
{
    return std::exchange(asked, {});
}

namespace {

enum Kind : CFTypeID { text = 1, number, truth, data, array, dictionary, address };

struct Object {
    explicit Object(Kind kind, std::string bytes = {}) : kind(kind), bytes(std::move(bytes))
    {
        ++mac().liveReferences;
    }
    ~Object() { --mac().liveReferences; }

    Kind kind;
    std::string bytes;
    std::int64_t value = 0;
    int references = 1;
    bool isConstant = false;
    std::vector<Object *> items = {};
    std::vector<std::pair<Object *, Object *>> pairs = {};
};

Object *of(const void *reference)
{
    return static_cast<Object *>(const_cast<void *>(reference));
}

template <typename Reference>
Reference as(Object *object)
{
    return reinterpret_cast<Reference>(object);
}

Object *retained(const void *reference)
{
    Object *object = of(reference);
    object->references += object->isConstant ? 0 : 1;
    return object;
}

void release(Object *object)
{
    if (object->isConstant || --object->references > 0)
        return;
    for (Object *item : object->items)
        release(item);
    for (const auto &[key, value] : object->pairs) {
        release(key);
        release(value);
    }
    delete object;
}

Object *constant(Kind kind, const char *bytes)
{
    static std::map<std::string, Object *> known;
    Object *&object = known[bytes];
    if (object == nullptr) {
        object = new Object(kind, bytes);
        object->isConstant = true;
        --mac().liveReferences;
    }
    return object;
}

Object *numberOf(std::int64_t value)
{
    auto *object = new Object(number);
    object->value = value;
    return object;
}

Object *found(CFDictionaryRef list, const void *key)
{
    for (const auto &[name, value] : of(list)->pairs)
        if (name->bytes == of(key)->bytes)
            return value;
    return nullptr;
}

std::string said(CFDictionaryRef list, CFStringRef key)
{
    const Object *value = found(list, key);
    return value == nullptr ? "none" : value->bytes;
}

/// Every attribute by name, but the data.
std::string allOf(CFDictionaryRef list)
{
    std::string words;
    for (const auto &[name, value] : of(list)->pairs)
        words += " " + name->bytes + "=" + (value->kind == data ? "data" : value->bytes);
    return words;
}

OSStatus inKeychain(const char *call, CFDictionaryRef query)
{
    mac().asked.push_back(call + allOf(query));
    return mac().keychainStatus;
}

std::string item(CFDictionaryRef query)
{
    return said(query, kSecAttrService) + "/" + said(query, kSecAttrAccount);
}

} // namespace

extern "C" {

CFStringRef standInText(const char *bytes)
{
    return as<CFStringRef>(constant(text, bytes));
}

#define CONSTANT(name) CFStringRef const name = standInText(#name);
CONSTANT(kCFURLVolumeTotalCapacityKey)
CONSTANT(kCFURLVolumeAvailableCapacityForImportantUsageKey)
CONSTANT(kSecClass)
CONSTANT(kSecClassGenericPassword)
CONSTANT(kSecAttrService)
CONSTANT(kSecAttrAccount)
CONSTANT(kSecValueData)
CONSTANT(kSecAttrAccessible)
CONSTANT(kSecAttrAccessibleAfterFirstUnlock)
CONSTANT(kSecReturnData)
CONSTANT(kSecMatchLimit)
CONSTANT(kSecMatchLimitOne)
const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = as<CFBooleanRef>(constant(truth, "true"));
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {};

void CFRelease(CFTypeRef reference)
{
    release(of(reference));
}
CFTypeID CFGetTypeID(CFTypeRef reference)
{
    return of(reference)->kind;
}
CFTypeID CFNumberGetTypeID()
{
    return number;
}
CFTypeID CFBooleanGetTypeID()
{
    return truth;
}
CFTypeID CFDataGetTypeID()
{
    return data;
}
CFIndex CFArrayGetCount(CFArrayRef list)
{
    return CFIndex(of(list)->items.size());
}
const void *CFArrayGetValueAtIndex(CFArrayRef list, CFIndex index)
{
    return of(list)->items.at(std::size_t(index));
}
const void *CFDictionaryGetValue(CFDictionaryRef list, const void *key)
{
    return found(list, key);
}
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void **keys, const void **values, CFIndex count,
                                   const CFDictionaryKeyCallBacks *, const CFDictionaryValueCallBacks *)
{
    auto *list = new Object(dictionary);
    for (CFIndex index = 0; index < count; ++index)
        list->pairs.emplace_back(retained(keys[index]), retained(values[index]));
    return as<CFDictionaryRef>(list);
}
Boolean CFNumberGetValue(CFNumberRef value, CFNumberType type, void *out)
{
    const std::int64_t wide = of(value)->value;
    if (type == kCFNumberSInt32Type) {
        const auto narrow = std::int32_t(wide);
        std::memcpy(out, &narrow, sizeof narrow);
    } else {
        std::memcpy(out, &wide, sizeof wide);
    }
    return true;
}
Boolean CFBooleanGetValue(CFBooleanRef value)
{
    return of(value)->bytes == "true";
}
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8 *bytes, CFIndex count, CFStringEncoding,
                                    Boolean)
{
    return as<CFStringRef>(
        new Object(text, std::string(reinterpret_cast<const char *>(bytes), std::size_t(count))));
}
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char *bytes, CFStringEncoding)
{
    return as<CFStringRef>(new Object(text, bytes));
}
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8 *bytes, CFIndex count)
{
    return as<CFDataRef>(
        new Object(data, std::string(reinterpret_cast<const char *>(bytes), std::size_t(count))));
}
const UInt8 *CFDataGetBytePtr(CFDataRef bytes)
{
    return reinterpret_cast<const UInt8 *>(of(bytes)->bytes.data());
}
CFIndex CFDataGetLength(CFDataRef bytes)
{
    return CFIndex(of(bytes)->bytes.size());
}
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle, Boolean)
{
    return as<CFURLRef>(new Object(address, of(path)->bytes));
}
Boolean CFURLCopyResourcePropertyForKey(CFURLRef volume, CFStringRef key, void *out, CFErrorRef *)
{
    const auto capacity = mac().capacities.find(of(volume)->bytes + " " + of(key)->bytes);
    *static_cast<const void **>(out) =
        capacity == mac().capacities.end() ? nullptr : numberOf(capacity->second);
    return true;
}

vm_size_t vm_kernel_page_size = 16'384;
mach_port_t mach_host_self()
{
    return 7;
}
kern_return_t host_statistics(host_t, host_flavor_t flavor, host_info_t out, mach_msg_type_number_t *count)
{
    if (flavor != HOST_CPU_LOAD_INFO || *count != HOST_CPU_LOAD_INFO_COUNT)
        return 4;
    std::memcpy(out, mac().ticks, sizeof mac().ticks);
    return mac().hostStatus;
}
kern_return_t host_statistics64(host_t, host_flavor_t flavor, host_info64_t out,
                                mach_msg_type_number_t *count)
{
    // As older systems do, which fill less than a newer program asks for.
    if (flavor != HOST_VM_INFO64 || *count < 38)
        return 4;
    *count = 38;
    auto &pages = *reinterpret_cast<vm_statistics64_data_t *>(out);
    pages.active_count = mac().active;
    pages.wire_count = mac().wired;
    pages.compressor_page_count = mac().compressed;
    return mac().hostStatus;
}
int sysctlbyname(const char *name, void *out, size_t *size, void *, size_t)
{
    const auto value = mac().systemValues.find(name);
    if (value == mac().systemValues.end())
        return -1;
    if (*size == sizeof(xsw_usage))
        static_cast<xsw_usage *>(out)->xsu_used = value->second;
    else
        std::memcpy(out, &value->second, *size);
    return 0;
}

CFTypeRef IOPSCopyPowerSourcesInfo()
{
    return mac().hasPowerInfo ? new Object(dictionary) : nullptr;
}
CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef info)
{
    auto *list = new Object(array);
    for (const auto &source : mac().powerSources) {
        auto *description = new Object(dictionary);
        for (const auto &[key, value] : source)
            description->pairs.emplace_back(new Object(text, key), numberOf(value));
        if (mac().isCharging)
            description->pairs.emplace_back(constant(text, "Is Charging"),
                                            constant(truth, *mac().isCharging ? "true" : "false"));
        auto *handle = new Object(text, std::to_string(list->items.size()));
        list->items.push_back(handle);
        of(info)->pairs.emplace_back(retained(handle), description);
    }
    return as<CFArrayRef>(list);
}
CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef info, CFTypeRef source)
{
    return as<CFDictionaryRef>(found(static_cast<CFDictionaryRef>(info), source));
}

OSStatus SecItemCopyMatching(CFDictionaryRef query, CFTypeRef *result)
{
    if (const OSStatus status = inKeychain("find", query); status != errSecSuccess)
        return status;
    const auto kept = mac().keychain.find(item(query));
    if (kept == mac().keychain.end())
        return errSecItemNotFound;
    *result = new Object(data, kept->second);
    return errSecSuccess;
}
OSStatus SecItemAdd(CFDictionaryRef attributes, CFTypeRef *)
{
    if (const OSStatus status = inKeychain("add", attributes); status != errSecSuccess)
        return status;
    const bool isNew = mac().keychain.emplace(item(attributes), said(attributes, kSecValueData)).second;
    return isNew ? errSecSuccess : errSecDuplicateItem;
}
OSStatus SecItemUpdate(CFDictionaryRef query, CFDictionaryRef changes)
{
    if (const OSStatus status = inKeychain("update", query); status != errSecSuccess)
        return status;
    mac().keychain.at(item(query)) = said(changes, kSecValueData);
    return errSecSuccess;
}
OSStatus SecItemDelete(CFDictionaryRef query)
{
    if (const OSStatus status = inKeychain("delete", query); status != errSecSuccess)
        return status;
    return mac().keychain.erase(item(query)) > 0 ? errSecSuccess : errSecItemNotFound;
}
}
