#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"

#include <algorithm>
#include <utility>

namespace zelvora::gtk {

namespace {

std::optional<platform::TimeInterval> s_duration;

double bezier(double t, double firstControl, double secondControl)
{
    double const rest = 1 - t;
    return (3 * rest * rest * t * firstControl) + (3 * rest * t * t * secondControl) + (t * t * t);
}

}

double easeInOut(double progress)
{
    if (progress <= 0 || progress >= 1)
        return std::clamp(progress, 0.0, 1.0);
    constexpr double firstControl = 0.42;
    constexpr double secondControl = 0.58;
    double low = 0;
    double high = 1;
    // Twenty halvings are finer than any screen's resolution.
    for (int step = 0; step < 20; ++step) {
        double const middle = (low + high) / 2;
        (bezier(middle, firstControl, secondControl) < progress ? low : high) = middle;
    }
    return bezier((low + high) / 2, 0, 1);
}

bool canAnimate(GtkWidget* widget)
{
    gboolean isWanted = FALSE;
    g_object_get(gtk_widget_get_settings(widget), "gtk-enable-animations", &isWanted, nullptr);
    return isWanted && gtk_widget_get_mapped(widget);
}

std::optional<platform::TimeInterval> currentAnimationDuration()
{
    return s_duration;
}

void runAnimated(platform::TimeInterval duration, std::function<void()> const& animations)
{
    auto const outer = std::exchange(s_duration, duration);
    animations();
    s_duration = outer;
}

void Motion::start(GtkWidget* widget, platform::TimeInterval duration, Step step)
{
    stop();
    m_widget = widget;
    m_duration = duration;
    m_step = std::move(step);
    m_start.reset();
    m_tick = gtk_widget_add_tick_callback(
        widget,
        [](GtkWidget*, GdkFrameClock* clock, gpointer motion) -> gboolean {
            return static_cast<Motion*>(motion)->tick(clock);
        },
        this, nullptr);
}

void Motion::finish()
{
    if (!isRunning())
        return;
    auto const step = std::exchange(m_step, nullptr);
    stop();
    step(1);
}

void Motion::stop()
{
    if (auto const tick = std::exchange(m_tick, 0))
        gtk_widget_remove_tick_callback(m_widget, tick);
    m_step = nullptr;
}

bool Motion::tick(GdkFrameClock* clock)
{
    auto const now = gdk_frame_clock_get_frame_time(clock);
    if (!m_start)
        m_start = now;
    double const elapsed = static_cast<double>(now - *m_start) / G_USEC_PER_SEC;
    if (elapsed < m_duration) {
        m_step(easeInOut(elapsed / m_duration));
        return G_SOURCE_CONTINUE;
    }
    // The last step may start another animation, or destroy this object.
    m_tick = 0;
    auto const step = std::exchange(m_step, nullptr);
    step(1);
    return G_SOURCE_REMOVE;
}

}
