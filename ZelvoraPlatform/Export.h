#pragma once

/// Marks what the shared libraries export. Empty in a static build: a host that links the static libraries into its own
/// shared library would otherwise export them as well.
#if defined(ZELVORA_SHARED) && defined(__GNUC__)
#define ZELVORA_API [[gnu::visibility("default")]]
#else
#define ZELVORA_API
#endif
