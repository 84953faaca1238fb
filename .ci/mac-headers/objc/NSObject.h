#pragma once

#if __OBJC__
#ifdef SWABBY_STAND_INS
#include <objc/objc.h>
#undef YES
#undef NO
#undef nil
#else
// As on an arm64 Mac.
typedef bool BOOL;
typedef struct objc_selector *SEL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
typedef long NSInteger;
typedef unsigned long NSUInteger;

@protocol NSObject
- (BOOL)respondsToSelector:(SEL)selector;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}
+ (instancetype)alloc;
- (instancetype)init;
- (void)dealloc;
@end
#endif
