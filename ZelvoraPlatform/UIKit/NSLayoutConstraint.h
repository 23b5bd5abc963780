#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <initializer_list>

namespace zelvora::platform {

class UIView;
class NSLayoutConstraint;

enum class NSLayoutAttribute : std::uint8_t { Top, Leading, Trailing, Bottom };

/// One edge of a view or of its safe area, from which constraints are made. A plain value: the view must outlive its
/// use.
struct ZELVORA_API NSLayoutAnchor {
    enum class Item : std::uint8_t { View, SafeArea };

    UIView* view = nullptr;
    Item item = Item::View;
    NSLayoutAttribute attribute = NSLayoutAttribute::Top;

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
    NSLayoutConstraint(NSLayoutAnchor first, NSLayoutAnchor second) : m_first(first), m_second(second) { }

    [[nodiscard]] NSLayoutAnchor const& firstAnchor() const { return m_first; }
    [[nodiscard]] NSLayoutAnchor const& secondAnchor() const { return m_second; }

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
