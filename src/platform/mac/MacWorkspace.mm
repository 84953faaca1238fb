#include "platform/mac/MacWorkspace.h"

#include "platform/mac/NativeText.h"

#import <AppKit/AppKit.h>

namespace swabby {
namespace {

bool openAddress(NSString *address)
{
    @autoreleasepool {
        NSURL *url = [NSURL URLWithString:address];
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
    return openAddress(@"x-apple.systempreferences:com.apple.LoginItems-Settings.extension");
}

} // namespace swabby
