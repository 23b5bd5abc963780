#pragma once

#include <functional>

namespace zelvora::examples {

/// Turns the main loop until the condition holds. False when it still does not after so many seconds.
[[nodiscard]] bool runUntil(std::function<bool()> const& condition, double seconds = 20);

}
