#include "platform/desktop/DesktopAppearance.h"
#include "platform/desktop/Display.h"

#import <AppKit/AppKit.h>

namespace swabby {
namespace {

/// What is set in the system's settings when the program starts; light and dark come with the toolkit's
/// palette.
class MacAppearance final : public DesktopAppearance {
public:
    MacAppearance()
    {
        Appearance found;
        found.reducesMotion = NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
        say(found);
    }
};

} // namespace

bool hasDisplay()
{
    return true;
}

bool placesWindows()
{
    return true;
}

bool blendsWindows()
{
    return true;
}

void comeToFront()
{
    [NSApp activateIgnoringOtherApps:YES];
}

bool wantsNameInTitles()
{
    return false;
}

std::unique_ptr<DesktopAppearance> makeDesktopAppearance()
{
    return std::make_unique<MacAppearance>();
}

} // namespace swabby
