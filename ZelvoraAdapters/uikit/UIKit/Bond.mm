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

namespace zelvora::uikit {

std::unique_lock<std::recursive_mutex> lockBonds()
{
    // Never destroyed: threads of the system may still call in while the process ends.
    static auto* const s_mutex = new std::recursive_mutex;
    return std::unique_lock(*s_mutex);
}

}
