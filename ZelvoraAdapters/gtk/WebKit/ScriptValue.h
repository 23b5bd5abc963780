#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <jsc/jsc.h>

#include <optional>

namespace zelvora::gtk {

/// What a page posted, with its types kept: members that are undefined are dropped, elements that are become null
/// markers, half a surrogate pair becomes U+FFFD, an object that holds itself holds a null marker there. Of any depth.
/// Absent where the engine could not read the value, or it is more than ten million values.
[[nodiscard]] std::optional<platform::Value> toValue(JSCValue* scriptValue);

}
