#include "platform/mac/MacNotifier.h"

#include "platform/mac/NativeText.h"

#include <QtCore/QCoreApplication>

#include <map>

#import <UserNotifications/UserNotifications.h>

/// Hears of what people do with the notifications, on a thread of the system's.
@interface SwabbyNotificationDelegate : NSObject <UNUserNotificationCenterDelegate> {
@public
    std::function<void(const QString &identifier)> opened;
}
@end

@implementation SwabbyNotificationDelegate
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler
{
    // Without this, nothing is shown while a window of Swabby's is in front.
    completionHandler(UNNotificationPresentationOptions(UNNotificationPresentationOptionBanner |
                                                        UNNotificationPresentationOptionList |
                                                        UNNotificationPresentationOptionSound));
}

- (void)userNotificationCenter:(UNUserNotificationCenter *)center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))completionHandler
{
    if ([response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier])
        opened(swabby::textFrom(response.notification.request.identifier));
    completionHandler();
}
@end

namespace swabby {

class MacNotifier::Centre : public std::enable_shared_from_this<Centre> {
public:
    explicit Centre(Permissions &permissions) : m_permissions(permissions) {}
    void follow()
    {
        m_delegate = [[SwabbyNotificationDelegate alloc] init];
        m_delegate->opened = [self = weak_from_this()](const QString &identifier) {
            QMetaObject::invokeMethod(qApp, [self, identifier] {
                if (const auto centre = self.lock())
                    centre->open(identifier);
            });
        };
        m_centre.delegate = m_delegate;
    }
    ~Centre() { m_centre.delegate = nil; }

    void ask()
    {
        const std::weak_ptr<Centre> self = weak_from_this();
        [m_centre requestAuthorizationWithOptions:UNAuthorizationOptions(UNAuthorizationOptionAlert |
                                                                         UNAuthorizationOptionSound)
                                completionHandler:^(BOOL isAllowed, NSError *) {
                                  QMetaObject::invokeMethod(qApp, [self, isRefused = !isAllowed] {
                                      if (const auto centre = self.lock())
                                          centre->m_permissions.note(Permission::notifications, isRefused);
                                  });
                                }];
    }

    void post(const Notification &notification, std::function<void()> opened)
    {
        UNMutableNotificationContent *content = [[UNMutableNotificationContent alloc] init];
        content.title = nativeText(notification.title);
        content.body = nativeText(notification.body);
        content.sound = UNNotificationSound.defaultSound;
        NSString *identifier = NSUUID.UUID.UUIDString;
        m_opened.insert_or_assign(textFrom(identifier), std::move(opened));
        [m_centre addNotificationRequest:[UNNotificationRequest requestWithIdentifier:identifier
                                                                              content:content
                                                                              trigger:nil]
                   withCompletionHandler:nil];
    }

private:
    // One of an earlier run, or opened before, leads nowhere.
    void open(const QString &identifier)
    {
        if (auto opened = m_opened.extract(identifier); !opened.empty() && opened.mapped())
            opened.mapped()();
    }

    Permissions &m_permissions;
    UNUserNotificationCenter *m_centre = UNUserNotificationCenter.currentNotificationCenter;
    SwabbyNotificationDelegate *m_delegate = nil;
    std::map<QString, std::function<void()>> m_opened;
};

MacNotifier::MacNotifier(Permissions &permissions)
{
    if (NSBundle.mainBundle.bundleIdentifier == nil)
        return;
    m_centre = std::make_shared<Centre>(permissions);
    m_centre->follow();
}

void MacNotifier::requestPermission()
{
    if (m_centre != nullptr)
        m_centre->ask();
}

void MacNotifier::post(const Notification &notification, std::function<void()> opened)
{
    if (m_centre != nullptr)
        m_centre->post(notification, std::move(opened));
}

} // namespace swabby
