#include "ZelvoraAdapters/uikit/UIKit/Bond.h"

#import <objc/runtime.h>

namespace {

// Its address is the key.
char s_ownerKey;

}

@implementation ZLVOwnerReference

+ (ZLVOwnerReference*)of:(NSObject*)native
{
    ZLVOwnerReference* reference = [self existingOf:native];
    if (!reference) {
        reference = [[ZLVOwnerReference alloc] init];
        objc_setAssociatedObject(native, &s_ownerKey, reference, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    }
    return reference;
}

+ (ZLVOwnerReference*)existingOf:(NSObject*)native
{
    return native ? objc_getAssociatedObject(native, &s_ownerKey) : nil;
}

@end
