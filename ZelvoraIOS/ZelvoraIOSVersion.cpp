#include "ZelvoraIOS/ZelvoraIOSVersion.h"

#if defined(__GNUC__)
#define ZELVORA_EXPORT __attribute__((visibility("default"), used))
#else
#define ZELVORA_EXPORT
#endif

extern "C" {
ZELVORA_EXPORT extern double const ZelvoraIOSVersionNumber = 1.0; // NOLINT
ZELVORA_EXPORT extern char const ZelvoraIOSVersionString[] = "@(#)PROGRAM:ZelvoraIOS  PROJECT:ZelvoraIOS-1\n"; // NOLINT
}
