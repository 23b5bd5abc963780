// Own declarations: associated objects.
#pragma once
#include <objc/objc.h>
#include <stdint.h>
enum { OBJC_ASSOCIATION_ASSIGN = 0, OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1, OBJC_ASSOCIATION_RETAIN = 01401 };
typedef uintptr_t objc_AssociationPolicy;
#ifdef __cplusplus
extern "C" {
#endif
void objc_setAssociatedObject(
    id _Nonnull object, const void* _Nonnull key, id _Nullable value, objc_AssociationPolicy policy);
id _Nullable objc_getAssociatedObject(id _Nonnull object, void const* _Nonnull key);
Class _Nullable objc_getClass(char const* _Nonnull name);
#ifdef __cplusplus
}
#endif
