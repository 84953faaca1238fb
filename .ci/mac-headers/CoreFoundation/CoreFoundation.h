#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const void *CFTypeRef;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef uint32_t CFStringEncoding;
typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef CFIndex CFNumberType;
typedef CFIndex CFURLPathStyle;
typedef double CFTimeInterval;
typedef const struct __CFAllocator *CFAllocatorRef;

#if __OBJC__
#define SWABBY_BRIDGED(kind) __attribute__((objc_bridge(kind)))
#define SWABBY_BRIDGED_MUTABLE(kind) __attribute__((objc_bridge_mutable(kind)))
#else
#define SWABBY_BRIDGED(kind)
#define SWABBY_BRIDGED_MUTABLE(kind)
#endif
typedef const struct SWABBY_BRIDGED(NSString) __CFString *CFStringRef;
typedef const struct SWABBY_BRIDGED(NSArray) __CFArray *CFArrayRef;
typedef const struct SWABBY_BRIDGED(NSDictionary) __CFDictionary *CFDictionaryRef;
typedef const struct SWABBY_BRIDGED(NSNumber) __CFNumber *CFNumberRef;
typedef const struct SWABBY_BRIDGED(NSNumber) __CFBoolean *CFBooleanRef;
typedef const struct SWABBY_BRIDGED(NSData) __CFData *CFDataRef;
typedef const struct SWABBY_BRIDGED(NSURL) __CFURL *CFURLRef;
typedef const struct SWABBY_BRIDGED(NSDate) __CFDate *CFDateRef;
typedef const struct SWABBY_BRIDGED(NSTimeZone) __CFTimeZone *CFTimeZoneRef;
typedef struct SWABBY_BRIDGED_MUTABLE(NSError) __CFError *CFErrorRef;
typedef struct __CFBundle *CFBundleRef;

typedef struct {
    CFIndex version;
    const void *(*retain)(CFAllocatorRef, const void *);
    void (*release)(CFAllocatorRef, const void *);
    CFStringRef (*copyDescription)(const void *);
    Boolean (*equal)(const void *, const void *);
    CFHashCode (*hash)(const void *);
} CFDictionaryKeyCallBacks;
typedef struct {
    CFIndex version;
    const void *(*retain)(CFAllocatorRef, const void *);
    void (*release)(CFAllocatorRef, const void *);
    CFStringRef (*copyDescription)(const void *);
    Boolean (*equal)(const void *, const void *);
} CFDictionaryValueCallBacks;

extern const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
extern const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;
extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFBooleanRef kCFBooleanTrue;
extern const CFStringRef kCFURLVolumeTotalCapacityKey;
extern const CFStringRef kCFURLVolumeAvailableCapacityForImportantUsageKey;
enum { kCFStringEncodingUTF8 = 0x08000100 };
enum { kCFNumberSInt32Type = 3, kCFNumberSInt64Type = 4 };
enum { kCFURLPOSIXPathStyle = 0 };

#ifdef SWABBY_STAND_INS
CFStringRef standInText(const char *text);
#define CFSTR(text) standInText(text)
#else
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
#endif

void CFRelease(CFTypeRef);
CFTypeID CFGetTypeID(CFTypeRef);
CFTypeID CFNumberGetTypeID(void);
CFTypeID CFBooleanGetTypeID(void);
CFTypeID CFDataGetTypeID(void);
CFIndex CFArrayGetCount(CFArrayRef);
const void *CFArrayGetValueAtIndex(CFArrayRef, CFIndex);
const void *CFDictionaryGetValue(CFDictionaryRef, const void *);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void **keys, const void **values, CFIndex,
                                   const CFDictionaryKeyCallBacks *, const CFDictionaryValueCallBacks *);
Boolean CFNumberGetValue(CFNumberRef, CFNumberType, void *);
Boolean CFBooleanGetValue(CFBooleanRef);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8 *, CFIndex, CFStringEncoding, Boolean);
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char *, CFStringEncoding);
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8 *, CFIndex);
const UInt8 *CFDataGetBytePtr(CFDataRef);
CFIndex CFDataGetLength(CFDataRef);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef, CFURLPathStyle, Boolean isDirectory);
Boolean CFURLCopyResourcePropertyForKey(CFURLRef, CFStringRef key, void *value, CFErrorRef *);

#ifdef __cplusplus
}
#endif
