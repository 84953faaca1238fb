#pragma once

#include <Availability.h>
#include <CoreFoundation/CoreFoundation.h>
#include <TargetConditionals.h>
#include <objc/NSObject.h>

typedef double CGFloat;
struct CGPoint {
    CGFloat x, y;
};
struct CGSize {
    CGFloat width, height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
static inline NSSize NSMakeSize(CGFloat width, CGFloat height)
{
    return NSSize{width, height};
}

typedef uint32_t FourCharCode;
typedef FourCharCode OSType;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;
typedef FourCharCode AEKeyword;
enum : FourCharCode {
    kCoreEventClass = 'aevt',
    kAEOpenApplication = 'oapp',
    kAEReopenApplication = 'rapp',
    keyAEPropData = 'prdt',
    keyAELaunchedAsLogInItem = 'lgit'
};

#pragma clang assume_nonnull begin

@interface NSString : NSObject
@property(readonly, nullable) const char *UTF8String;
- (BOOL)isEqualToString:(NSString *)other;
+ (nullable instancetype)stringWithUTF8String:(const char *)text;
@end
typedef NSString *NSNotificationName;

@interface NSURL : NSObject
+ (nullable instancetype)URLWithString:(NSString *)text;
+ (NSURL *)fileURLWithFileSystemRepresentation:(const char *)path
                                   isDirectory:(BOOL)isDirectory
                                 relativeToURL:(nullable NSURL *)base;
@property(readonly) const char *fileSystemRepresentation __attribute__((objc_returns_inner_pointer));
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(nullable const void *)bytes length:(NSUInteger)length;
@end

@interface NSError : NSObject
@property(readonly, copy) NSString *localizedDescription;
@end

@interface NSArray<__covariant Element> : NSObject
@property(readonly) NSUInteger count;
- (Element)objectAtIndex:(NSUInteger)index;
@end

@interface NSUUID : NSObject
+ (instancetype)UUID;
@property(readonly, copy) NSString *UUIDString;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle *mainBundle;
@property(nullable, readonly, copy) NSString *bundleIdentifier;
@end

typedef enum NSProcessInfoThermalState : NSInteger {
    NSProcessInfoThermalStateNominal,
    NSProcessInfoThermalStateFair,
    NSProcessInfoThermalStateSerious,
    NSProcessInfoThermalStateCritical
} NSProcessInfoThermalState;
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo *processInfo;
@property(readonly) NSProcessInfoThermalState thermalState;
@end

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager *defaultManager;
- (BOOL)trashItemAtURL:(NSURL *)url
      resultingItemURL:(NSURL *_Nullable __autoreleasing *_Nullable)result
                 error:(NSError *_Nullable __autoreleasing *_Nullable)error;
@end

@interface NSNotification : NSObject
@end
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end

@interface NSObject (SwabbyMainThread)
- (void)performSelectorOnMainThread:(SEL)selector withObject:(nullable id)object waitUntilDone:(BOOL)wait;
@end

@interface NSAppleEventDescriptor : NSObject
@property(readonly) AEEventID eventID;
@property(readonly) OSType enumCodeValue;
- (nullable NSAppleEventDescriptor *)paramDescriptorForKeyword:(AEKeyword)keyword;
@end
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager *)sharedAppleEventManager;
@property(nullable, readonly, strong) NSAppleEventDescriptor *currentAppleEvent;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

#pragma clang assume_nonnull end
