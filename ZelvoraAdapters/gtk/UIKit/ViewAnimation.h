#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"

#include <gtk/gtk.h>

#include <functional>
#include <optional>

namespace zelvora::gtk {

/// The system's default animation curve, slow at both ends. Maps 0...1 to 0...1.
[[nodiscard]] double easeInOut(double progress);

/// Whether the user wants animations and `widget` could show one now.
[[nodiscard]] bool canAnimate(GtkWidget* widget);

/// The duration of the running `UIView::animate` block, if any. Main thread.
[[nodiscard]] std::optional<platform::TimeInterval> currentAnimationDuration();

/// Runs the block; within it, `currentAnimationDuration` is the duration.
void runAnimated(platform::TimeInterval duration, std::function<void()> const& animations);

/// An animation that advances with the frames of a widget's window. Main thread.
class Motion final {
public:
    /// Called with the progress along the curve; the last call has 1.
    using Step = std::function<void(double progress)>;

    Motion() = default;
    Motion(Motion const&) = delete;
    Motion& operator=(Motion const&) = delete;
    ~Motion() { stop(); }

    [[nodiscard]] bool isRunning() const { return m_tick != 0; }
    /// Stops the running animation, if any, and starts this one. The widget outlives the motion.
    void start(GtkWidget* widget, platform::TimeInterval duration, Step step);
    /// Jumps to the end of the running animation, if any.
    void finish();
    void stop();

private:
    bool tick(GdkFrameClock* clock);

    GtkWidget* m_widget = nullptr;
    guint m_tick = 0;
    std::optional<gint64> m_start;
    platform::TimeInterval m_duration = 0;
    Step m_step;
};

}
