#pragma once

#include <version>

#if !defined(__cpp_lib_expected)
#error "ZelvoraIOS needs C++23 with <expected>: compile with -std=c++23, by GCC 12, by Clang 19, or by a later one."
#endif

/// Marks what the shared libraries export. Empty in a static build: a host that links the static libraries into its own
/// shared library would otherwise export them as well.
#if defined(ZELVORA_SHARED) && defined(__GNUC__)
#define ZELVORA_API [[gnu::visibility("default")]]
#else
#define ZELVORA_API
#endif
