#pragma once

#include <functional>

namespace zelvora::tests {

/// Runs GLib's default main context on this thread until `done` holds; false where it does not come to that in half a
/// minute. What `done` asks for must change in that context, or `wakeMainLoop` must be called after it has changed.
bool runMainLoopUntil(std::function<bool()> const& done);
/// Has `runMainLoopUntil` ask again. Any thread.
void wakeMainLoop();

}
