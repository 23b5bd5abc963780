#include "tests/contract/gtk/MainLoop.h"

#include <glib.h>

namespace zelvora::tests {

bool runMainLoopUntil(std::function<bool()> const& done)
{
    constexpr guint milliseconds = 30'000;
    bool isLate = false;
    auto const late = [](gpointer data) -> gboolean {
        *static_cast<bool*>(data) = true;
        return G_SOURCE_CONTINUE;
    };
    guint const deadline = g_timeout_add(milliseconds, late, &isLate);
    while (!done() && !isLate)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(deadline);
    return !isLate;
}

void wakeMainLoop()
{
    g_main_context_wakeup(nullptr);
}

}
