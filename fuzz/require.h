#pragma once

#include "ZelvoraPlatform/fatalError.h"

#include <string_view>

namespace zelvora::fuzz {

/// Stops the fuzzer, which then keeps the input, unless the promise is kept.
inline void require(bool isKept, std::string_view promise)
{
    if (!isKept)
        platform::fatalError(promise);
}

}
