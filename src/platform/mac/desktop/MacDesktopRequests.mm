#include "platform/mac/desktop/ApplicationMenus.h"

#import <AppKit/AppKit.h>

/// Hears from the system when the program has started and when it is opened again.
@interface SwabbyLaunchObserver : NSObject {
@public
    std::function<void(bool isAtLogin)> started;
    std::function<void()> openedAgain;
}
- (void)hasStarted:(NSNotification *)notification;
- (void)isOpenedAgain:(NSAppleEventDescriptor *)event withReply:(NSAppleEventDescriptor *)reply;
@end

@implementation SwabbyLaunchObserver
- (void)hasStarted:(NSNotification *)notification
{
    NSAppleEventManager *events = NSAppleEventManager.sharedAppleEventManager;
    // Whoever opened the program says so in the event that is at hand just now.
    NSAppleEventDescriptor *event = events.currentAppleEvent;
    started(event.eventID == kAEOpenApplication &&
            [event paramDescriptorForKeyword:keyAEPropData].enumCodeValue == keyAELaunchedAsLogInItem);
    // Afterwards, since the system sets a handler of its own at the start.
    [events setEventHandler:self
                andSelector:@selector(isOpenedAgain:withReply:)
              forEventClass:kCoreEventClass
                 andEventID:kAEReopenApplication];
}

- (void)isOpenedAgain:(NSAppleEventDescriptor *)event withReply:(NSAppleEventDescriptor *)reply
{
    [NSApp activateIgnoringOtherApps:YES];
    openedAgain();
}
@end

namespace swabby {
namespace {

class MacDesktopFollower final : public DesktopFollower {
public:
    explicit MacDesktopFollower(const DesktopRequests &requests) : m_requests(requests)
    {
        NSApp.mainMenu = makeApplicationMenus(m_requests);
        m_observer->started = m_requests.started;
        m_observer->openedAgain = m_requests.openedAgain;
        [NSNotificationCenter.defaultCenter addObserver:m_observer
                                               selector:@selector(hasStarted:)
                                                   name:NSApplicationDidFinishLaunchingNotification
                                                 object:nil];
        if (NSRunningApplication.currentApplication.finishedLaunching)
            [m_observer performSelectorOnMainThread:@selector(hasStarted:) withObject:nil waitUntilDone:NO];
    }
    ~MacDesktopFollower() override
    {
        [NSNotificationCenter.defaultCenter removeObserver:m_observer];
        [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                          andEventID:kAEReopenApplication];
        NSApp.mainMenu = nil;
    }

private:
    const DesktopRequests m_requests;
    SwabbyLaunchObserver *m_observer = [[SwabbyLaunchObserver alloc] init];
};

} // namespace

std::unique_ptr<DesktopFollower> followDesktop(const DesktopRequests &requests)
{
    return std::make_unique<MacDesktopFollower>(requests);
}

} // namespace swabby
