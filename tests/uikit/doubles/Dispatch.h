#pragma once

#include <cstddef>
#include <functional>

namespace zelvora::doubles {

/// Runs the blocks of the main queue that are due, and those that they submit; returns how many. Main thread.
std::size_t runMainQueue();

/// Runs the main queue until `done` returns true, which it is asked after each block and every millisecond; false after
/// half a minute. Main thread.
bool runMainUntil(std::function<bool()> const& done);

}
