#include "platform/desktop/TrayItem.h"
#include "platform/mac/NativeText.h"

#include <QtCore/QBuffer>

#import <AppKit/AppKit.h>

namespace {

using Clicked = std::function<void(bool wantsMenu)>;

// Every display has its own; the system makes the picture smaller for those with fewer pixels.
constexpr double pixelsForEachPoint = 2;

NSImage *nativePicture(const QImage &picture)
{
    QByteArray png;
    QBuffer file(&png);
    picture.save(&file, "PNG");
    NSImage *image = [[NSImage alloc] initWithData:[NSData dataWithBytes:png.constData()
                                                                  length:NSUInteger(png.size())]];
    const QSizeF size = picture.deviceIndependentSize();
    image.size = NSMakeSize(size.width(), size.height());
    [image setTemplate:NO];
    return image;
}

/// Where a view stands, counted from the first screen's upper left corner.
QRect placeOf(NSView *view)
{
    if (view.window == nil || NSScreen.screens.count == 0)
        return {};
    const NSRect place = [view.window convertRectToScreen:[view convertRect:view.bounds toView:nil]];
    const double height = [NSScreen.screens objectAtIndex:0].frame.size.height;
    return QRectF(place.origin.x, height - place.origin.y - place.size.height, place.size.width,
                  place.size.height)
        .toAlignedRect();
}

} // namespace

@interface SwabbyStatusTarget : NSObject {
@public
    Clicked clicked;
}
- (void)click:(id)sender;
@end

@implementation SwabbyStatusTarget
- (void)click:(id)sender
{
    clicked(NSApp.currentEvent.type == NSEventTypeRightMouseUp);
}
@end

namespace swabby {
namespace {

/// The item in the menu bar.
class MacStatusItem final : public TrayItem {
public:
    MacStatusItem()
    {
        m_target->clicked = [this](bool wantsMenu) {
            const QRect where = placeOf(m_item.button);
            if (wantsMenu)
                Q_EMIT menuWanted(where);
            else
                Q_EMIT activated(where);
        };
        NSStatusBarButton *button = m_item.button;
        button.target = m_target;
        button.action = @selector(click:);
        [button sendActionOn:NSEventMask(NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp)];
        button.imagePosition = NSImageOnly;
        button.imageScaling = NSImageScaleNone;
    }
    ~MacStatusItem() override { [NSStatusBar.systemStatusBar removeStatusItem:m_item]; }

    Place place() const override { return Place::there; }

    void show(const TrayPicture &picture) override
    {
        @autoreleasepool {
            NSStatusBarButton *button = m_item.button;
            if (button == nil)
                return;
            NSImage *image = nativePicture(picture.drawTitle(pixelsForEachPoint));
            button.image = image;
            button.toolTip = nativeText(picture.tip);
            [button setAccessibilityLabel:nativeText(QStringLiteral("Swabby ") + picture.tip)];
            m_item.length = image.size.width;
        }
    }

    void hide() override {}

private:
    SwabbyStatusTarget *m_target = [[SwabbyStatusTarget alloc] init];
    NSStatusItem *m_item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
};

} // namespace

TrayItems makeTrayItems()
{
    TrayItems items;
    items.push_back(std::make_unique<MacStatusItem>());
    return items;
}

} // namespace swabby
