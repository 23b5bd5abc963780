#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"

#include <gtk/gtk.h>

#include <functional>
#include <optional>

namespace zelvora::gtk {

/// The system's default curve for views that move: slow at both ends. Takes and gives 0 to 1.
[[nodiscard]] double easeInOut(double progress);

/// Whether the user wants to see things move, and `widget` could show it now.
[[nodiscard]] bool canAnimate(GtkWidget* widget);

/// The duration of the `UIView::animate` block that is running, where one is. Main thread.
[[nodiscard]] std::optional<platform::TimeInterval> currentAnimationDuration();

/// Runs the block; `currentAnimationDuration` is the duration meanwhile.
void runAnimated(platform::TimeInterval duration, std::function<void()> const& animations);

/// Something that moves with the frames of a widget's window. Main thread.
class Motion final {
public:
    /// Told the progress along the curve, 1 at last and then no more.
    using Step = std::function<void(double progress)>;

    Motion() = default;
    Motion(Motion const&) = delete;
    Motion& operator=(Motion const&) = delete;
    ~Motion() { stop(); }

    [[nodiscard]] bool isRunning() const { return m_tick != 0; }
    /// Ends what runs where it stands and begins anew. The widget outlives the motion.
    void start(GtkWidget* widget, platform::TimeInterval duration, Step step);
    /// Goes to the end at once, if anything runs.
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
