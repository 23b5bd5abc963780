#pragma once

/// Marks what a shared build of the libraries exports. Empty in a static build, because a host that links the libraries
/// into a shared library of its own would export them too.
#if defined(ZELVORA_SHARED) && defined(__GNUC__)
#define ZELVORA_API [[gnu::visibility("default")]]
#else
#define ZELVORA_API
#endif
