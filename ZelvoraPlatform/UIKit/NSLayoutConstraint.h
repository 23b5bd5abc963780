#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <initializer_list>

namespace zelvora::platform {

class UIView;
class NSLayoutConstraint;

enum class NSLayoutAttribute : std::uint8_t { Top, Leading, Trailing, Bottom };

/// One edge of a view or of its safe area, for saying constraints. A plain value: the view must outlive its use.
struct ZELVORA_API NSLayoutAnchor {
    enum class Item : std::uint8_t { View, SafeArea };

    UIView* view = nullptr;
    Item item = Item::View;
    NSLayoutAttribute attribute = NSLayoutAttribute::Top;

    [[nodiscard]] NSLayoutConstraint constraintEqualTo(NSLayoutAnchor other) const;

    bool operator==(NSLayoutAnchor const&) const = default;
};

/// "This edge equals that one". A plain value: two constraints that say the same are the same. While active, it is kept
/// by the nearest common ancestor of its two views, and it ends when either of them leaves that ancestor. Main thread.
class ZELVORA_API NSLayoutConstraint final {
public:
    NSLayoutConstraint(NSLayoutAnchor first, NSLayoutAnchor second) : m_first(first), m_second(second) { }

    [[nodiscard]] NSLayoutAnchor const& firstAnchor() const { return m_first; }
    [[nodiscard]] NSLayoutAnchor const& secondAnchor() const { return m_second; }

    /// Activating a constraint between views with no common ancestor is a programming error that stops the process.
    void setActive(bool active) const;
    /// In the order given.
    static void activate(std::initializer_list<NSLayoutConstraint> constraints);

    bool operator==(NSLayoutConstraint const&) const = default;

private:
    NSLayoutAnchor m_first;
    NSLayoutAnchor m_second;
};

}
