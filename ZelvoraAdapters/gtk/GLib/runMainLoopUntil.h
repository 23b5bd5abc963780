#pragma once

#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <glib.h>

#include <functional>

namespace zelvora::gtk {

/// Runs GLib's default main context on the calling thread, which must be the main thread, until `condition` is true.
/// Returns false if it is still false after `seconds`. The condition is checked after every event, and at least every
/// ten milliseconds, so it may depend on other threads and processes too.
[[nodiscard]] inline bool runMainLoopUntil(std::function<bool()> const& condition, double seconds = 30)
{
    constexpr guint checkInterval = 10;
    auto const tick = attach(g_timeout_source_new(checkInterval), [] { });
    auto const deadline = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
    bool isMet = condition();
    while (!isMet && g_get_monotonic_time() <= deadline) {
        g_main_context_iteration(nullptr, TRUE);
        isMet = condition();
    }
    return isMet;
}

}
