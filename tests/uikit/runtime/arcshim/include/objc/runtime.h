// Own, minimal: the public runtime API names the Foundation headers and the tests need. (GCC's header has an inline
// function that reads object->class_pointer, which ARC forbids.)
#pragma once
#include <objc/objc.h>
#include <stddef.h>
#ifdef __cplusplus
extern "C" {
#endif
typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
typedef struct objc_property* objc_property_t;
struct objc_method_description {
    SEL name;
    char* types;
};
char const* class_getName(Class);
Class class_getSuperclass(Class);
Method class_getInstanceMethod(Class, SEL);
Method class_getClassMethod(Class, SEL);
BOOL class_respondsToSelector(Class, SEL);
char const* method_getTypeEncoding(Method);
IMP method_getImplementation(Method);
IMP method_setImplementation(Method, IMP);
char const* object_getClassName(id);
id objc_getClass(char const*);
Class objc_lookUpClass(char const*);
enum { OBJC_ASSOCIATION_ASSIGN = 0, OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1, OBJC_ASSOCIATION_RETAIN = 01401 };
void objc_setAssociatedObject(id object, void const* key, id value, unsigned long policy);
id objc_getAssociatedObject(id object, void const* key);
SEL sel_registerName(char const*);
char const* sel_getName(SEL);
#ifdef __cplusplus
}
#endif
