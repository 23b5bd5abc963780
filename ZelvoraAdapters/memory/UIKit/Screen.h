#pragma once

#include "ZelvoraAdapters/memory/WebKit/CallRecord.h"
#include "ZelvoraAdapters/shared/Layout/SafeAreaInsets.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Date.h"
#include "ZelvoraPlatform/UIKit/Animated.h"
#include "ZelvoraPlatform/UIKit/Geometry.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace zelvora::memory {

class UIViewPeer;

using shared::SafeAreaInsets;

/// One change of frame within an animation. The view is for comparison only; it may be destroyed.
struct Move {
    /// The view that moved or changed its size.
    platform::UIView const* view = nullptr;
    /// The frame in the superview, in points, before and after.
    /// @{
    platform::CGRect from;
    platform::CGRect to;
    /// @}

    bool operator==(Move const&) const = default;
};

/// One call of `UIView::animate`. Frames change at once; the moves are what a user would see.
struct Animation {
    /// As it was given, in seconds.
    platform::TimeInterval duration = 0;
    /// Whether the block laid out anything.
    bool laidOut = false;
    /// In the order of the layout, which places a view before its subviews.
    std::vector<Move> moves;
};

/// A screen that came or went. The controller is for comparison only; it may be destroyed.
struct Transition {
    /// How the screen came (`Push`, `Present`) or went (`Pop`, `Dismiss`).
    enum class Kind : std::uint8_t { Push, Pop, Present, Dismiss };

    /// What happened to which screen, and whether the caller asked for an animation.
    /// @{
    Kind kind = Kind::Push;
    platform::UIViewController const* controller = nullptr;
    platform::Animated animated = platform::Animated::No;
    /// @}

    bool operator==(Transition const&) const = default;
};

/// The device's screen: its size, the views on it and what happened there. The root view of every controller fills it.
/// Main thread. It outlives the views.
class ZELVORA_API Screen final {
public:
    /// Initially 390 by 844 points, with a safe area 47 from the top and 34 from the bottom. Changes take effect at the
    /// next layout.
    /// @{
    void setSize(double width, double height);
    void setSafeAreaInsets(SafeAreaInsets insets) { m_insets = insets; }
    /// @}
    /// As set last, in points. The origin of the bounds is 0, 0.
    /// @{
    [[nodiscard]] platform::CGRect bounds() const { return m_bounds; }
    [[nodiscard]] SafeAreaInsets safeAreaInsets() const { return m_insets; }
    /// @}

    /// Lays out every tree of views, as the system does in each iteration of the main loop.
    void layout();
    /// What the constraints left open or contradict, as of the latest layout of each tree, a sentence each; empty if
    /// they determine every view. A view is named by its path of indices among subviews: "root/2/0". A view that is in
    /// no other does not count until it has a frame: it may be one that a closed screen has left.
    [[nodiscard]] std::vector<std::string> ambiguities() const;

    /// Every animation so far, in the order of their beginnings.
    [[nodiscard]] std::vector<Animation> const& animations() const { return m_animations; }
    /// Every screen that came or went so far, in order.
    [[nodiscard]] std::vector<Transition> const& transitions() const { return m_transitions; }
    /// What is wrong with how the host uses the SDK, a sentence each: calls that the system ignores, such as a second
    /// presentation, and what `platform::Platform::complain` was told. Any thread.
    [[nodiscard]] std::vector<std::string> complaints() const;
    /// What was called on the views of this screen, web views included.
    [[nodiscard]] CallRecord& calls() { return m_calls; }

    /// For the adapter itself.
    /// @{
    void animate(platform::TimeInterval duration, std::function<void()> const& animations);
    void didLayOut();
    void didPlace(platform::UIView const& view, platform::CGRect from, platform::CGRect to);
    void record(Transition transition) { m_transitions.push_back(transition); }
    void complain(std::string complaint);
    void add(UIViewPeer& peer) { m_peers.push_back(&peer); }
    void remove(UIViewPeer& peer) { std::erase(m_peers, &peer); }
    /// @}

private:
    platform::CGRect m_bounds { 0, 0, 390, 844 };
    SafeAreaInsets m_insets { 47, 34 };
    // Each removes itself when it is destroyed.
    std::vector<UIViewPeer*> m_peers;
    std::vector<Animation> m_animations;
    // Indices of the animations whose blocks are running, the innermost last.
    std::vector<std::size_t> m_running;
    std::vector<Transition> m_transitions;
    std::mutex mutable m_mutex;
    std::vector<std::string> m_complaints;
    CallRecord m_calls;
};

}
