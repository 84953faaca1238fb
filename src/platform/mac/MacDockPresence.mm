#include "platform/mac/MacDockPresence.h"

#import <AppKit/AppKit.h>

namespace swabby {

void MacDockPresence::setActivationPolicy(ActivationPolicy policy)
{
    [NSApp setActivationPolicy:policy == ActivationPolicy::regular ? NSApplicationActivationPolicyRegular
                                                                   : NSApplicationActivationPolicyAccessory];
}

} // namespace swabby
