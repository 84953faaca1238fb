// The classes of a Mac's desktop: the menu bar, its item, and the events that open a program.
#import <AppKit/AppKit.h>

#include "StandIns.h"

#include <objc/runtime.h>

NSNotificationName const NSApplicationDidFinishLaunchingNotification = @"launched";

namespace {

void note(const std::string &words)
{
    mac().asked.push_back(words);
}

std::string plain(NSString *text)
{
    return text == nil ? "nil" : text.UTF8String;
}

std::string number(double value)
{
    return std::to_string(int(value));
}

} // namespace

@implementation NSEvent
- (NSEventType)type
{
    return mac().isRightClick ? NSEventTypeRightMouseUp : NSEventTypeLeftMouseUp;
}
@end
@implementation NSApplication (Desktop)
- (NSEvent *)currentEvent
{
    return [[NSEvent alloc] init];
}
- (void)setMainMenu:(NSMenu *)menu
{
    note(menu == nil ? "no menus" : "menus");
}
@end

@implementation NSMenuItem
HELD(NSEventModifierFlags, keyEquivalentModifierMask, setKeyEquivalentModifierMask)
HELD(NSMenu *, submenu, setSubmenu)
HELD(id, target, setTarget)
HELD(id, representedObject, setRepresentedObject)
- (instancetype)initWithTitle:(NSString *)title action:(SEL)action keyEquivalent:(NSString *)key
{
    mac().menuLines.push_back({plain(title), plain(key), action == nullptr ? "" : sel_getName(action), self});
    return self;
}
+ (NSMenuItem *)separatorItem
{
    return [[self alloc] init];
}
@end
@implementation NSMenu
- (instancetype)initWithTitle:(NSString *)title
{
    return self;
}
- (void)addItem:(NSMenuItem *)item
{
}
@end

@implementation NSImage
HELD(NSSize, size, setSize)
- (instancetype)initWithData:(NSData *)data
{
    return self;
}
- (void)setTemplate:(BOOL)isTemplate
{
    note(isTemplate ? "template" : "colours");
}
@end

@interface StandInScreens : NSArray
@end
@implementation StandInScreens
- (NSUInteger)count
{
    return 1;
}
- (id)objectAtIndex:(NSUInteger)index
{
    return [[NSScreen alloc] init];
}
@end
@implementation NSScreen
+ (NSArray *)screens
{
    return [[StandInScreens alloc] init];
}
- (NSRect)frame
{
    return {{0, 0}, {1440, 900}};
}
@end
@implementation NSWindow
- (NSRect)convertRectToScreen:(NSRect)rect
{
    return {{rect.origin.x + 1000, rect.origin.y + 876}, rect.size};
}
@end
@implementation NSView
HELD(NSString *, toolTip, setToolTip)
- (NSRect)bounds
{
    return {{0, 0}, {40, 24}};
}
- (NSWindow *)window
{
    return [[NSWindow alloc] init];
}
- (NSRect)convertRect:(NSRect)rect toView:(NSView *)view
{
    return rect;
}
- (void)setAccessibilityLabel:(NSString *)label
{
    note("read out " + plain(label));
}
@end
@implementation NSStatusBarButton
HELD(NSCellImagePosition, imagePosition, setImagePosition)
HELD(NSImageScaling, imageScaling, setImageScaling)
HELD(id, target, setTarget)
HELD(SEL, action, setAction)
- (NSImage *)image
{
    return nil;
}
- (void)setImage:(NSImage *)image
{
    note("image " + number(image.size.width) + "x" + number(image.size.height));
}
- (NSInteger)sendActionOn:(NSEventMask)mask
{
    note("clicks " + std::to_string(mask));
    return 0;
}
@end
@implementation NSStatusItem
- (NSStatusBarButton *)button
{
    static NSStatusBarButton *only = [[NSStatusBarButton alloc] init];
    mac().button = only;
    return only;
}
- (CGFloat)length
{
    return 0;
}
- (void)setLength:(CGFloat)length
{
    note("length " + number(length));
}
@end
@implementation NSStatusBar
+ (NSStatusBar *)systemStatusBar
{
    return [[self alloc] init];
}
- (NSStatusItem *)statusItemWithLength:(CGFloat)length
{
    note("item " + number(length));
    return [[NSStatusItem alloc] init];
}
- (void)removeStatusItem:(NSStatusItem *)item
{
    note("no item");
}
@end

@implementation NSNotificationCenter
+ (NSNotificationCenter *)defaultCenter
{
    return [[self alloc] init];
}
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSNotificationName)name object:(id)object
{
    note("observe " + plain(name));
    mac().observer = observer;
}
- (void)removeObserver:(id)observer
{
    note("observe nothing");
}
@end

@implementation NSAppleEventDescriptor
- (AEEventID)eventID
{
    return kAEOpenApplication;
}
- (OSType)enumCodeValue
{
    return mac().isAtLogin ? keyAELaunchedAsLogInItem : 0;
}
- (NSAppleEventDescriptor *)paramDescriptorForKeyword:(AEKeyword)keyword
{
    return keyword == keyAEPropData ? self : nil;
}
@end
@implementation NSAppleEventManager
+ (NSAppleEventManager *)sharedAppleEventManager
{
    return [[self alloc] init];
}
- (NSAppleEventDescriptor *)currentAppleEvent
{
    return [[NSAppleEventDescriptor alloc] init];
}
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID
{
    note(std::string("reopen by ") + sel_getName(selector));
}
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID
{
    note("reopen by nobody");
}
@end
