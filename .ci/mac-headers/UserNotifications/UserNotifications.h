#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef enum UNAuthorizationOptions : NSUInteger {
    UNAuthorizationOptionBadge = 1 << 0,
    UNAuthorizationOptionSound = 1 << 1,
    UNAuthorizationOptionAlert = 1 << 2
} UNAuthorizationOptions;
typedef enum UNNotificationPresentationOptions : NSUInteger {
    UNNotificationPresentationOptionSound = 1 << 1,
    UNNotificationPresentationOptionList = 1 << 3,
    UNNotificationPresentationOptionBanner = 1 << 4
} UNNotificationPresentationOptions;
extern "C" NSString *const UNNotificationDefaultActionIdentifier;

@interface UNNotificationSound : NSObject
@property(class, readonly, copy) UNNotificationSound *defaultSound;
@end
@interface UNNotificationContent : NSObject
@end
@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString *title;
@property(copy) NSString *body;
@property(copy, nullable) UNNotificationSound *sound;
@end
@interface UNNotificationTrigger : NSObject
@end
@interface UNNotificationRequest : NSObject
+ (instancetype)requestWithIdentifier:(NSString *)identifier
                              content:(UNNotificationContent *)content
                              trigger:(nullable UNNotificationTrigger *)trigger;
@property(readonly, copy) NSString *identifier;
@end
@interface UNNotification : NSObject
@property(readonly, copy) UNNotificationRequest *request;
@end
@interface UNNotificationResponse : NSObject
@property(readonly, copy) UNNotification *notification;
@property(readonly, copy) NSString *actionIdentifier;
@end

@class UNUserNotificationCenter;
@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end
@interface UNUserNotificationCenter : NSObject
+ (UNUserNotificationCenter *)currentNotificationCenter;
#ifdef SWABBY_STAND_INS // whose runtime knows no weak references
@property(nullable, assign) id<UNUserNotificationCenterDelegate> delegate;
#else
@property(nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
#endif
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError *_Nullable error))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest *)request
         withCompletionHandler:(nullable void (^)(NSError *_Nullable error))completionHandler;
@end

#pragma clang assume_nonnull end
