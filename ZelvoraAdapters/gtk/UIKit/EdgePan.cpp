#include "ZelvoraAdapters/gtk/UIKit/EdgePan.h"

#include "ZelvoraAdapters/gtk/UIKit/Canvas.h"
#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"

#include <cmath>
#include <utility>
#include <vector>

namespace zelvora::gtk {

using platform::UIGestureRecognizerState;

namespace {

constexpr double edgeWidth = 20;
// How far a pointer may move in a click.
constexpr double slack = 8;

std::vector<EdgePanTarget> targetsAt(GtkWidget* whole, double x, double y)
{
    std::vector<EdgePanTarget> targets;
    auto* canvas = gtk_widget_pick(whole, x, y, GTK_PICK_DEFAULT);
    for (; canvas; canvas = gtk_widget_get_parent(canvas)) {
        auto* client = canvasClient(canvas);
        double startX = 0;
        double startY = 0;
        if (client && gtk_widget_translate_coordinates(whole, canvas, x, y, &startX, &startY) && startX < edgeWidth)
            client->collectEdgePanTargets(targets);
    }
    return targets;
}

/// The drags in one window. Its gesture owns it, and the window owns the gesture.
class EdgePan final {
public:
    explicit EdgePan(GtkGestureDrag* gesture)
    {
        g_signal_connect(gesture, "drag-begin",
            G_CALLBACK(+[](GtkGestureDrag* drag, double x, double y, EdgePan* self) { self->begin(drag, x, y); }),
            this);
        g_signal_connect(gesture, "drag-update",
            G_CALLBACK(+[](GtkGestureDrag* drag, double x, double y, EdgePan* self) { self->update(drag, x, y); }),
            this);
        g_signal_connect(gesture, "drag-end", G_CALLBACK(+[](GtkGestureDrag*, double x, double, EdgePan* self) {
            self->end(UIGestureRecognizerState::Ended, x);
        }),
            this);
        g_signal_connect(gesture, "cancel", G_CALLBACK(+[](GtkGestureDrag*, GdkEventSequence*, EdgePan* self) {
            self->end(UIGestureRecognizerState::Cancelled, self->m_distance);
        }),
            this);
    }

private:
    void begin(GtkGestureDrag* drag, double x, double y)
    {
        m_isOver = false;
        auto* window = gtk_event_controller_get_widget(GTK_EVENT_CONTROLLER(drag));
        m_candidates = targetsAt(window, x, y);
        if (m_candidates.empty())
            gtk_gesture_set_state(GTK_GESTURE(drag), GTK_EVENT_SEQUENCE_DENIED);
    }

    void update(GtkGestureDrag* drag, double x, double y)
    {
        if (m_active.empty()) {
            if (m_candidates.empty() || std::hypot(x, y) < slack)
                return;
            bool const goesRight = x > std::abs(y);
            auto const candidates = std::exchange(m_candidates, {});
            auto active = goesRight ? choose(candidates) : std::vector<EdgePanTarget>();
            // A delegate may have ended the drag, as by closing the window.
            if (m_isOver)
                return;
            m_active = std::move(active);
            bool const isOurs = !m_active.empty();
            gtk_gesture_set_state(GTK_GESTURE(drag), isOurs ? GTK_EVENT_SEQUENCE_CLAIMED : GTK_EVENT_SEQUENCE_DENIED);
            m_speed = 0;
            m_distance = x;
            m_time = g_get_monotonic_time();
            tell(UIGestureRecognizerState::Began);
            return;
        }
        measure(x);
        tell(UIGestureRecognizerState::Changed);
    }

    void end(UIGestureRecognizerState state, double x)
    {
        m_isOver = true;
        m_candidates.clear();
        measure(x);
        tell(state);
        m_active.clear();
    }

    static std::vector<EdgePanTarget> choose(std::vector<EdgePanTarget> const& candidates)
    {
        shared::GestureArbitration arbitration;
        std::vector<EdgePanTarget> chosen;
        for (auto const& candidate : candidates) {
            if (arbitration.begin(candidate.recognizer))
                chosen.push_back(candidate);
        }
        return chosen;
    }

    void measure(double x)
    {
        auto const now = g_get_monotonic_time();
        double const seconds = static_cast<double>(now - m_time) / G_USEC_PER_SEC;
        // A finger that rests before it lifts has no speed; the event of lifting alone does not show that.
        constexpr double shortest = 0.001;
        constexpr double rest = 0.1;
        if (seconds > shortest && (x != m_distance || seconds > rest)) {
            m_speed = (x - m_distance) / seconds;
            m_time = now;
        }
        m_distance = x;
    }

    void tell(UIGestureRecognizerState state)
    {
        // A recognizer's action may end the drag.
        auto const told = m_active;
        for (auto const& target : told) {
            target.moved(m_distance, m_speed);
            target.recognizer->recognize(state);
        }
    }

    std::vector<EdgePanTarget> m_candidates;
    std::vector<EdgePanTarget> m_active;
    bool m_isOver = false;
    double m_distance = 0;
    double m_speed = 0;
    gint64 m_time = 0;
};

constexpr char const* watchedKey = "zelvora-edge-pans";

}

void watchEdgePans(GtkWindow* window)
{
    if (g_object_get_data(G_OBJECT(window), watchedKey))
        return;
    auto* gesture = gtk_gesture_drag_new();
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(gesture), GTK_PHASE_CAPTURE);
    auto* drag = new EdgePan(GTK_GESTURE_DRAG(gesture));
    g_object_set_data_full(
        G_OBJECT(gesture), watchedKey, drag, [](gpointer held) { delete static_cast<EdgePan*>(held); });
    g_object_set_data(G_OBJECT(window), watchedKey, gesture);
    gtk_widget_add_controller(GTK_WIDGET(window), GTK_EVENT_CONTROLLER(gesture));
}

}
