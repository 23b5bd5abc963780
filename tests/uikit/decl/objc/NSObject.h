// Own declarations: the root class and protocol.
#pragma once
#include <objc/objc.h>
typedef long NSInteger;
typedef unsigned long NSUInteger;
_Pragma("clang assume_nonnull begin") @class NSString, NSMethodSignature, NSInvocation;
__attribute__((swift_name("NSObjectProtocol")))
@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
@property (readonly) NSUInteger hash;
@property (readonly, copy) NSString* description;
- (Class)class;
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
- (BOOL)conformsToProtocol:(Protocol*)aProtocol;
- (instancetype)self;
@end
__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa;
}
+ (void)load;
+ (void)initialize;
+ (instancetype)alloc;
+ (instancetype)new;
- (instancetype)init;
- (void)dealloc;
+ (Class)class;
@end
_Pragma("clang assume_nonnull end")
