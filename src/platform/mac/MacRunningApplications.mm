#include "platform/mac/MacRunningApplications.h"

#include "platform/mac/NativeText.h"

#import <AppKit/AppKit.h>

namespace swabby {

std::vector<RunningApplication> MacRunningApplications::list()
{
    std::vector<RunningApplication> running;
    @autoreleasepool {
        NSArray<NSRunningApplication *> *applications = NSWorkspace.sharedWorkspace.runningApplications;
        for (NSUInteger index = 0; index < applications.count; ++index) {
            NSRunningApplication *application = [applications objectAtIndex:index];
            running.push_back(
                {.pid = application.processIdentifier, .bundleId = textFrom(application.bundleIdentifier)});
        }
    }
    return running;
}

bool MacRunningApplications::terminate(const ProcessIdentity &process)
{
    @autoreleasepool {
        // Found first and compared then: what was found stays that program, whoever gets its id next.
        NSRunningApplication *application =
            [NSRunningApplication runningApplicationWithProcessIdentifier:process.pid];
        return application != nil && m_processes.identify(process.pid) == process && [application terminate];
    }
}

} // namespace swabby
