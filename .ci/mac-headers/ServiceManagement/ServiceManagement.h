#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef enum SMAppServiceStatus : NSInteger {
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound
} SMAppServiceStatus;
__attribute__((availability(macos, introduced = 13.0)))
@interface SMAppService : NSObject
@property(class, readonly) SMAppService *mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError *_Nullable __autoreleasing *_Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError *_Nullable __autoreleasing *_Nullable)error;
@end

#pragma clang assume_nonnull end
