#include "platform/mac/desktop/ApplicationMenus.h"

#include "platform/mac/NativeText.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>

#import <AppKit/AppKit.h>

/// What a line of Swabby's own does.
@interface SwabbyMenuChoice : NSObject {
@public
    std::function<void()> chosen;
}
- (void)choose:(id)sender;
@end

@implementation SwabbyMenuChoice
- (void)choose:(id)sender
{
    chosen();
}
@end

namespace swabby {
namespace {

// The windows read their keys themselves; a menu's key takes them away first, so its line hands them back.
void pressInFront(int key, Qt::KeyboardModifiers modifiers)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        if (QWindow *window = QGuiApplication::focusWindow())
            QCoreApplication::sendEvent(window, &event);
    }
}

class MenuBuilder {
public:
    void begin(NSString *title)
    {
        m_menu = [[NSMenu alloc] initWithTitle:title];
        NSMenuItem *line = [[NSMenuItem alloc] initWithTitle:title action:nil keyEquivalent:@""];
        line.submenu = m_menu;
        [bar addItem:line];
    }
    void divide() { [m_menu addItem:[NSMenuItem separatorItem]]; }
    /// A line that the system follows itself.
    NSMenuItem *add(NSString *title, SEL action, NSString *key)
    {
        NSMenuItem *line = [[NSMenuItem alloc] initWithTitle:title action:action keyEquivalent:key];
        [m_menu addItem:line];
        return line;
    }
    void add(NSString *title, NSString *key, std::function<void()> chosen)
    {
        SwabbyMenuChoice *choice = [[SwabbyMenuChoice alloc] init];
        choice->chosen = std::move(chosen);
        NSMenuItem *line = add(title, @selector(choose:), key);
        line.target = choice;
        line.representedObject = choice; // a target alone is not kept
    }
    void addKey(NSString *title, NSString *key, int pressed, Qt::KeyboardModifiers more = {})
    {
        add(title, key, [=] { pressInFront(pressed, Qt::ControlModifier | more); });
    }

    NSMenu *bar = [[NSMenu alloc] initWithTitle:@""];

private:
    NSMenu *m_menu = nil;
};

} // namespace

NSMenu *makeApplicationMenus(const DesktopRequests &requests)
{
    const auto command = [&requests](TrayCommand what) {
        return [&requests, what] { requests.chosen(what); };
    };
    MenuBuilder menus;
    menus.begin(@"Swabby");
    menus.add(@"About Swabby", @selector(orderFrontStandardAboutPanel:), @"");
    menus.add(@"Settings…", @",", command(TrayCommand::openSettingsWindow));
    menus.add(@"Hide Swabby", @selector(hide:), @"h");
    menus.add(@"Hide Others", @selector(hideOtherApplications:), @"h").keyEquivalentModifierMask =
        NSEventModifierFlags(NSEventModifierFlagCommand | NSEventModifierFlagOption);
    menus.add(@"Show All", @selector(unhideAllApplications:), @"");
    menus.divide();
    menus.add(@"Quit Swabby", @"q", command(TrayCommand::quit));

    menus.begin(@"Edit");
    menus.addKey(@"Undo", @"z", Qt::Key_Z);
    menus.addKey(@"Redo", @"Z", Qt::Key_Z, Qt::ShiftModifier);
    menus.addKey(@"Cut", @"x", Qt::Key_X);
    menus.addKey(@"Copy", @"c", Qt::Key_C);
    menus.addKey(@"Paste", @"v", Qt::Key_V);
    menus.addKey(@"Select All", @"a", Qt::Key_A);

    menus.begin(@"View");
    for (int section = 0; section < requests.sections.size(); ++section)
        menus.add(nativeText(requests.sections[section]), nativeText(QString::number(section + 1)),
                  [&requests, section] { requests.sectionChosen(section); });
    menus.divide();
    menus.add(@"Refresh", @"r", command(TrayCommand::refresh));

    menus.begin(@"Window");
    menus.add(@"Close", @"w", [] {
        if (QWindow *window = QGuiApplication::focusWindow())
            window->close();
    });
    menus.add(@"Minimize", @selector(performMiniaturize:), @"m");
    menus.add(@"Swabby", @"0", command(TrayCommand::openMainWindow));
    menus.add(@"Ask AI", @"", command(TrayCommand::openAskWindow));
    return menus.bar;
}

} // namespace swabby
