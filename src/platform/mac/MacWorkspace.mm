#include "platform/mac/MacWorkspace.h"

#include "platform/mac/NativeText.h"
#include "platform/mactools/SettingsPages.h"

#import <AppKit/AppKit.h>

namespace swabby {
namespace {

bool openAddress(const QString &address)
{
    @autoreleasepool {
        NSURL *url = [NSURL URLWithString:nativeText(address)];
        return url != nil && [NSWorkspace.sharedWorkspace openURL:url];
    }
}

} // namespace

bool MacWorkspace::reveal(const QString &path)
{
    @autoreleasepool {
        return [NSWorkspace.sharedWorkspace selectFile:nativeText(path) inFileViewerRootedAtPath:@""];
    }
}

bool MacWorkspace::openLoginItemSettings()
{
    return openAddress(SettingsPages::loginItems());
}

bool MacWorkspace::openPermissionSettings(Permission what)
{
    return openAddress(SettingsPages::allowing(what));
}

} // namespace swabby
