// The classes of a Mac that Swabby uses; each notes what it was asked. Nothing is ever freed.
#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>
#import <UserNotifications/UserNotifications.h>

#include "StandIns.h"

#include <cstring>
#include <objc/runtime.h>

extern "C" {
void *_NSConcreteGlobalBlock[32];
void *_NSConcreteStackBlock[32];
}

namespace {

void note(const std::string &words)
{
    mac().asked.push_back(words);
}

std::string plain(NSString *text)
{
    return text == nil ? "nil" : text.UTF8String;
}

} // namespace

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end
@implementation NSAutoreleasePool
- (void)drain
{
}
@end

@implementation NSObject
+ (void)initialize
{
}
+ (instancetype)alloc
{
    return (id)class_createInstance(self, 0);
}
- (instancetype)init
{
    return self;
}
- (void)dealloc
{
}
- (id)retain
{
    return self;
}
- (void)release
{
}
- (id)autorelease
{
    return self;
}
- (id)copy
{
    return self;
}
- (BOOL)respondsToSelector:(SEL)selector
{
    return class_getInstanceMethod(object_getClass(self), selector) != NULL;
}
- (void)performSelectorOnMainThread:(SEL)selector withObject:(id)object waitUntilDone:(BOOL)wait
{
    note(std::string("later ") + sel_getName(selector));
}
@end

@implementation NSObject (Perform)
- (void)performSelector:(SEL)selector withObject:(id)first withObject:(id)second
{
    using Send = void (*)(id, SEL, id, id);
    reinterpret_cast<Send>(class_getMethodImplementation(object_getClass(self), selector))(self, selector,
                                                                                           first, second);
}
@end

@interface NSConstantString : NSString {
@public
    const char *bytes;
    unsigned int length;
}
@end
@interface StandInString : NSString {
@public
    std::string *bytes;
}
@end
@implementation NSString
+ (instancetype)stringWithUTF8String:(const char *)text
{
    StandInString *made = [StandInString alloc];
    made->bytes = new std::string(text);
    return (id)made;
}
- (const char *)UTF8String
{
    return "";
}
- (BOOL)isEqualToString:(NSString *)other
{
    return plain(self) == plain(other);
}
@end
@implementation NSConstantString
- (const char *)UTF8String
{
    return bytes;
}
@end
@implementation StandInString
- (const char *)UTF8String
{
    return bytes->c_str();
}
@end

namespace {

NSString *native(const std::string &text)
{
    return [NSString stringWithUTF8String:text.c_str()];
}

} // namespace

@interface StandInURL : NSURL {
@public
    std::string *bytes;
}
@end
@implementation NSURL
+ (instancetype)URLWithString:(NSString *)text
{
    StandInURL *made = [StandInURL alloc];
    made->bytes = new std::string(plain(text));
    return (id)made;
}
+ (NSURL *)fileURLWithFileSystemRepresentation:(const char *)path
                                   isDirectory:(BOOL)isDirectory
                                 relativeToURL:(NSURL *)base
{
    return [NSURL URLWithString:native(path)];
}
- (const char *)fileSystemRepresentation
{
    return "";
}
@end
@implementation StandInURL
- (const char *)fileSystemRepresentation
{
    return bytes->c_str();
}
@end

@implementation NSData
+ (instancetype)dataWithBytes:(const void *)bytes length:(NSUInteger)length
{
    note("data " + std::string(static_cast<const char *>(bytes) + 1, 3));
    return [[self alloc] init];
}
@end
@implementation NSError
- (NSString *)localizedDescription
{
    return @"Operation not permitted";
}
@end
@implementation NSUUID
+ (instancetype)UUID
{
    return [[self alloc] init];
}
- (NSString *)UUIDString
{
    static int count = 0;
    return native("id-" + std::to_string(++count));
}
@end
@implementation NSBundle
+ (NSBundle *)mainBundle
{
    return [[self alloc] init];
}
- (NSString *)bundleIdentifier
{
    return mac().isInBundle ? @"com.swabby.app" : nil;
}
@end
@implementation NSProcessInfo
+ (NSProcessInfo *)processInfo
{
    return [[self alloc] init];
}
- (NSProcessInfoThermalState)thermalState
{
    return NSProcessInfoThermalState(mac().thermalState);
}
@end
@implementation NSFileManager
+ (NSFileManager *)defaultManager
{
    return [[self alloc] init];
}
- (BOOL)trashItemAtURL:(NSURL *)url resultingItemURL:(NSURL **)result error:(NSError **)error
{
    note(std::string("trash ") + url.fileSystemRepresentation);
    if (!mac().trashed.empty())
        *result = [NSURL URLWithString:native(mac().trashed)];
    return !mac().isRefusing;
}
@end

@interface StandInArray : NSArray {
@public
    std::vector<id> *items;
}
@end
@implementation NSArray
- (NSUInteger)count
{
    return 0;
}
- (id)objectAtIndex:(NSUInteger)index
{
    return nil;
}
@end
@implementation StandInArray
- (NSUInteger)count
{
    return items->size();
}
- (id)objectAtIndex:(NSUInteger)index
{
    return items->at(index);
}
@end

@interface StandInApplication : NSRunningApplication {
@public
    pid_t pid;
}
@end
@implementation NSRunningApplication
+ (NSRunningApplication *)currentApplication
{
    return [[StandInApplication alloc] init];
}
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid
{
    if (mac().applications.count(pid) == 0)
        return nil;
    StandInApplication *found = [StandInApplication alloc];
    found->pid = pid;
    return (id)found;
}
- (pid_t)processIdentifier
{
    return 0;
}
- (NSString *)bundleIdentifier
{
    return nil;
}
- (BOOL)isFinishedLaunching
{
    return NO;
}
- (BOOL)terminate
{
    return NO;
}
@end
@implementation StandInApplication
- (pid_t)processIdentifier
{
    return pid;
}
- (NSString *)bundleIdentifier
{
    const std::string &name = mac().applications.at(pid);
    return name.empty() ? nil : native(name);
}
- (BOOL)terminate
{
    note("terminate " + std::to_string(pid));
    return !mac().isRefusing;
}
@end

@implementation NSWorkspace
+ (NSWorkspace *)sharedWorkspace
{
    return [[self alloc] init];
}
- (NSArray *)runningApplications
{
    StandInArray *list = [StandInArray alloc];
    list->items = new std::vector<id>;
    for (const auto &[pid, name] : mac().applications)
        list->items->push_back([NSRunningApplication runningApplicationWithProcessIdentifier:pid]);
    return list;
}
- (BOOL)accessibilityDisplayShouldReduceMotion
{
    return NO;
}
- (BOOL)selectFile:(NSString *)path inFileViewerRootedAtPath:(NSString *)root
{
    note("select " + plain(path) + " in '" + plain(root) + "'");
    return !mac().isRefusing;
}
- (BOOL)openURL:(NSURL *)url
{
    note(std::string("open ") + url.fileSystemRepresentation);
    return !mac().isRefusing;
}
@end

@implementation NSApplication
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy
{
    note("policy " + std::to_string(policy));
    return YES;
}
- (void)activateIgnoringOtherApps:(BOOL)isForced
{
    note("activate");
}
@end
NSApplication *NSApp = nil;

NSString *const UNNotificationDefaultActionIdentifier = @"default action";
@implementation UNNotificationSound
+ (UNNotificationSound *)defaultSound
{
    static UNNotificationSound *sound = [[self alloc] init];
    return sound;
}
@end
@implementation UNNotificationContent
@end
@implementation UNMutableNotificationContent
HELD(NSString *, title, setTitle)
HELD(NSString *, body, setBody)
HELD(UNNotificationSound *, sound, setSound)
@end
@implementation UNNotificationTrigger
@end
@implementation UNNotificationRequest
+ (instancetype)requestWithIdentifier:(NSString *)identifier
                              content:(UNNotificationContent *)content
                              trigger:(UNNotificationTrigger *)trigger
{
    auto *words = (UNMutableNotificationContent *)content;
    note("request " + plain(identifier) + "|" + plain(words.title) + "|" + plain(words.body) +
         (words.sound == nil ? "|silent" : "|sound") + (trigger == nil ? "" : "|later"));
    UNNotificationRequest *made = [[self alloc] init];
    held<NSString *>(made, "identifier") = identifier;
    return made;
}
- (NSString *)identifier
{
    return held<NSString *>(self, "identifier");
}
@end
@implementation UNNotification
- (UNNotificationRequest *)request
{
    return held<UNNotificationRequest *>(self, "request");
}
@end
@implementation UNNotificationResponse
- (UNNotification *)notification
{
    return held<UNNotification *>(self, "notification");
}
- (NSString *)actionIdentifier
{
    return held<NSString *>(self, "action");
}
@end
@implementation UNUserNotificationCenter
HELD(id<UNUserNotificationCenterDelegate>, delegate, setDelegate)
+ (UNUserNotificationCenter *)currentNotificationCenter
{
    static UNUserNotificationCenter *centre = [[self alloc] init];
    note("centre");
    return centre;
}
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError *error))completionHandler
{
    note("ask " + std::to_string(options));
    completionHandler(NO, nil);
}
- (void)addNotificationRequest:(UNNotificationRequest *)request
         withCompletionHandler:(void (^)(NSError *error))completionHandler
{
    note("add " + plain(request.identifier));
}
@end

@implementation SMAppService
+ (SMAppService *)mainAppService
{
    return [[self alloc] init];
}
- (SMAppServiceStatus)status
{
    return SMAppServiceStatus(mac().loginStatus);
}
- (BOOL)change:(const char *)what error:(NSError **)error
{
    note(what);
    if (mac().isRefusing)
        *error = [[NSError alloc] init];
    return !mac().isRefusing;
}
- (BOOL)registerAndReturnError:(NSError **)error
{
    return [self change:"register" error:error];
}
- (BOOL)unregisterAndReturnError:(NSError **)error
{
    return [self change:"unregister" error:error];
}
@end
