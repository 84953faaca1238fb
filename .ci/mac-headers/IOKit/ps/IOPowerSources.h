#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

CFTypeRef IOPSCopyPowerSourcesInfo(void);
CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef info);
CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef info, CFTypeRef source);

#ifdef __cplusplus
}
#endif
