#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"

#include <jsc/jsc.h>

#include <cstddef>
#include <expected>
#include <string>

namespace zelvora::gtk {

/// The most values that a page may post in one message; an array or object is one, and each of its elements or members
/// another. The engine and this adapter convert a message on the main thread.
inline constexpr std::size_t mostPostedValues = 100'000;

/// Converts what a page posted, of any depth, and keeps the types. Undefined members are dropped, undefined elements
/// become null markers, a lone surrogate becomes U+FFFD, and an object that contains itself contains a null marker
/// there. The error says why a value cannot be had: there is too much of it, which is found out before it is converted,
/// or the engine cannot read it.
[[nodiscard]] std::expected<platform::Value, std::string> toValue(JSCValue* scriptValue);

}
