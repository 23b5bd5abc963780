#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <initializer_list>

namespace zelvora::platform {

class UIView;
class NSLayoutConstraint;

/// An edge of a view. The leading edge is the left one, or the right one where people read from right to left.
enum class NSLayoutAttribute : std::uint8_t { Top, Leading, Trailing, Bottom };

/// One edge of a view or of its safe area, from which constraints are made. A plain value: the view must outlive its
/// use.
struct ZELVORA_API NSLayoutAnchor {
    /// Whose edge it is: the view's own, or that of its safe area.
    enum class Item : std::uint8_t { View, SafeArea };

    /// Must not be null in a constraint that is activated.
    UIView* view = nullptr;
    /// The safe area is what a `UILayoutGuide` stands for.
    Item item = Item::View;
    /// Which edge. A safe area has a top and a bottom only.
    NSLayoutAttribute attribute = NSLayoutAttribute::Top;

    /// The constraint that both edges are in the same place. It is not active yet.
    [[nodiscard]] NSLayoutConstraint constraintEqualTo(NSLayoutAnchor other) const;

    bool operator==(NSLayoutAnchor const&) const = default;
};

/// "This edge equals that one." A plain value: two constraints that name the same edges are the same constraint. While
/// active it is kept by the nearest common ancestor of its two views, and it ends when either view leaves that
/// ancestor. If active constraints contradict one another, the adapter leaves one out and reports it. Main thread.
///
///     auto const safeArea = root->safeAreaLayoutGuide();
///     auto const pinned = header->topAnchor().constraintEqualTo(safeArea.topAnchor());
///     pinned.setActive(true);
class ZELVORA_API NSLayoutConstraint final {
public:
    /// As `constraintEqualTo` makes it: not active yet.
    NSLayoutConstraint(NSLayoutAnchor first, NSLayoutAnchor second) : m_first(first), m_second(second) { }

    /// The edges in the order given. With the two exchanged, it is another constraint.
    /// @{
    [[nodiscard]] NSLayoutAnchor const& firstAnchor() const { return m_first; }
    [[nodiscard]] NSLayoutAnchor const& secondAnchor() const { return m_second; }
    /// @}

    /// Does nothing if the constraint is in that state already. Both anchors must name a view. Activating a constraint
    /// between views with no common ancestor stops the process.
    void setActive(bool active) const;
    /// Activates them in the order given.
    static void activate(std::initializer_list<NSLayoutConstraint> constraints);

    bool operator==(NSLayoutConstraint const&) const = default;

private:
    NSLayoutAnchor m_first;
    NSLayoutAnchor m_second;
};

}
