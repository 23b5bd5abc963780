#include "examples/driving/runUntil.h"

#include <glib.h>

namespace zelvora::examples {

namespace {

// Wakes the loop now and then: what is waited for need not be an event of the loop.
class Tick final {
public:
    Tick()
        : m_source(
              g_timeout_add(intervalInMilliseconds, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr))
    {
    }
    Tick(Tick const&) = delete;
    Tick& operator=(Tick const&) = delete;
    ~Tick() { g_source_remove(m_source); }

private:
    static constexpr guint intervalInMilliseconds = 10;

    guint m_source;
};

}

bool runUntil(std::function<bool()> const& condition, double seconds)
{
    Tick const tick;
    auto const deadline = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
    while (!condition()) {
        if (g_get_monotonic_time() > deadline)
            return false;
        g_main_context_iteration(nullptr, TRUE);
    }
    return true;
}

}
