#include "ZelvoraAdapters/gtk/GLib/Timer.h"

#include "ZelvoraAdapters/gtk/GLib/ReadyTimeSource.h"
#include "ZelvoraAdapters/gtk/GLib/attach.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvora::gtk {

Timer::Timer(platform::Block<void()> fire)
    : m_fire(std::move(fire))
    , m_source(attach(makeReadyTimeSource(), [this] { run(); }, g_main_context_get_thread_default()))
{
}

void Timer::set(platform::TimeInterval interval)
{
    constexpr platform::TimeInterval tenYears = 10.0 * 365 * 24 * 60 * 60;
    platform::TimeInterval const sensible = interval > 0 ? std::min(interval, tenYears) : 0;
    g_source_set_ready_time(
        m_source.get(), g_get_monotonic_time() + static_cast<gint64>(std::ceil(sensible * G_USEC_PER_SEC)));
}

void Timer::stop()
{
    g_source_set_ready_time(m_source.get(), -1);
}

void Timer::run()
{
    stop();
    m_fire();
}

}
