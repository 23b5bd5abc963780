#include "ZelvoraAdapters/gtk/GLib/Timer.h"

#include "ZelvoraAdapters/gtk/GLib/ReadyTimeSource.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvora::gtk {

Timer::Timer(platform::Block<void()> fire) : m_source(makeReadyTimeSource()), m_fire(std::move(fire))
{
    auto const run = [](gpointer data) -> gboolean {
        auto* const timer = static_cast<Timer*>(data);
        timer->stop();
        timer->m_fire();
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(m_source, run, this, nullptr);
    g_source_attach(m_source, g_main_context_get_thread_default());
}

Timer::~Timer()
{
    g_source_destroy(m_source);
    g_source_unref(m_source);
}

void Timer::set(platform::TimeInterval interval)
{
    constexpr platform::TimeInterval tenYears = 10.0 * 365 * 24 * 60 * 60;
    platform::TimeInterval const sensible = interval > 0 ? std::min(interval, tenYears) : 0;
    g_source_set_ready_time(
        m_source, g_get_monotonic_time() + static_cast<gint64>(std::ceil(sensible * G_USEC_PER_SEC)));
}

void Timer::stop()
{
    g_source_set_ready_time(m_source, -1);
}

}
