#include "platform/mac/MacLoginService.h"

#include "platform/mac/NativeText.h"

#import <ServiceManagement/ServiceManagement.h>

namespace swabby {
namespace {

QString said(bool isDone, NSError *problem)
{
    if (isDone)
        return {};
    return problem == nil ? QStringLiteral("the system does not say why")
                          : textFrom(problem.localizedDescription);
}

} // namespace

bool MacLoginService::isEnabled()
{
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

QString MacLoginService::registerAtLogin()
{
    @autoreleasepool {
        NSError *problem = nil;
        const bool isDone = [SMAppService.mainAppService registerAndReturnError:&problem];
        return said(isDone, problem);
    }
}

QString MacLoginService::unregister()
{
    @autoreleasepool {
        NSError *problem = nil;
        const bool isDone = [SMAppService.mainAppService unregisterAndReturnError:&problem];
        return said(isDone, problem);
    }
}

} // namespace swabby
