#pragma once

#include "platform/Foundation/Value.h"

#include <jsc/jsc.h>

#include <optional>

namespace zelvora::gtk {

/// What a page posted, with its types kept: members that are undefined are dropped, elements that are become null
/// markers, half a surrogate pair becomes U+FFFD. Of any depth. Absent where the engine could not read the value.
[[nodiscard]] std::optional<platform::Value> toValue(JSCValue* scriptValue);

}
