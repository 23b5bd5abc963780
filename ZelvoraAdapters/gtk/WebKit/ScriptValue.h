#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <jsc/jsc.h>

#include <optional>

namespace zelvora::gtk {

/// Converts what a page posted, of any depth, and keeps the types. Undefined members are dropped, undefined elements
/// become null markers, a lone surrogate becomes U+FFFD, and an object that contains itself contains a null marker
/// there. Absent if the engine cannot read the value or it consists of more than ten million values.
[[nodiscard]] std::optional<platform::Value> toValue(JSCValue* scriptValue);

}
