#pragma once

#import <Foundation/Foundation.h>

#include <sys/types.h>

#pragma clang assume_nonnull begin

@class NSImage, NSMenu, NSWindow;

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication *currentApplication;
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
@property(readonly) pid_t processIdentifier;
@property(readonly, copy, nullable) NSString *bundleIdentifier;
@property(readonly, getter=isFinishedLaunching) BOOL finishedLaunching;
- (BOOL)terminate;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
@property(readonly, copy) NSArray<NSRunningApplication *> *runningApplications;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (BOOL)selectFile:(nullable NSString *)path inFileViewerRootedAtPath:(NSString *)root;
- (BOOL)openURL:(NSURL *)url;
@end

typedef enum NSEventType : NSUInteger { NSEventTypeLeftMouseUp = 2, NSEventTypeRightMouseUp = 4 } NSEventType;
typedef enum NSEventMask : unsigned long long {
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1ULL << NSEventTypeRightMouseUp
} NSEventMask;
typedef enum NSEventModifierFlags : NSUInteger {
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20
} NSEventModifierFlags;
@interface NSEvent : NSObject
@property(readonly) NSEventType type;
@end

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited
} NSApplicationActivationPolicy;
extern "C" NSNotificationName const NSApplicationDidFinishLaunchingNotification;
@interface NSApplication : NSObject
@property(nullable, strong) NSMenu *mainMenu;
@property(nullable, readonly, strong) NSEvent *currentEvent;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)isForced;
- (void)hide:(nullable id)sender;
- (void)hideOtherApplications:(nullable id)sender;
- (void)unhideAllApplications:(nullable id)sender;
- (void)orderFrontStandardAboutPanel:(nullable id)sender;
@end
extern "C" NSApplication *_Null_unspecified NSApp;

@interface NSMenuItem : NSObject
- (instancetype)initWithTitle:(NSString *)title action:(nullable SEL)action keyEquivalent:(NSString *)key;
+ (NSMenuItem *)separatorItem;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(nullable, strong) NSMenu *submenu;
#ifdef SWABBY_STAND_INS
@property(nullable, assign) id target;
#else
@property(nullable, weak) id target;
#endif
@property(nullable, strong) id representedObject;
@end
@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString *)title;
- (void)addItem:(NSMenuItem *)item;
@end

@interface NSImage : NSObject
- (nullable instancetype)initWithData:(NSData *)data;
- (void)setTemplate:(BOOL)isTemplate;
@property NSSize size;
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen *> *screens;
@property(readonly) NSRect frame;
@end
@interface NSView : NSObject
@property(readonly) NSRect bounds;
@property(nullable, readonly, assign) NSWindow *window;
@property(nullable, copy) NSString *toolTip;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView *)view;
- (void)setAccessibilityLabel:(nullable NSString *)label;
@end
@interface NSWindow : NSObject
- (NSRect)convertRectToScreen:(NSRect)rect;
- (void)performMiniaturize:(nullable id)sender;
@end

typedef enum NSCellImagePosition : NSUInteger { NSNoImage, NSImageOnly } NSCellImagePosition;
typedef enum NSImageScaling : NSUInteger {
    NSImageScaleProportionallyDown,
    NSImageScaleAxesIndependently,
    NSImageScaleNone
} NSImageScaling;
@interface NSStatusBarButton : NSView
@property(nullable, strong) NSImage *image;
@property NSCellImagePosition imagePosition;
@property NSImageScaling imageScaling;
#ifdef SWABBY_STAND_INS
@property(nullable, assign) id target;
#else
@property(nullable, weak) id target;
#endif
@property(nullable) SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end
static const CGFloat NSVariableStatusItemLength = -1.0;
@interface NSStatusItem : NSObject
@property CGFloat length;
@property(nullable, readonly, strong) NSStatusBarButton *button;
@end
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar *systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end

#pragma clang assume_nonnull end
