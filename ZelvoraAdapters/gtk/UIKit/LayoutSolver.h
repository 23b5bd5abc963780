#pragma once

#include "ZelvoraPlatform/UIKit/Geometry.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <optional>
#include <vector>

namespace zelvora::gtk {

/// What the layout has to know of the views beyond their constraints.
class LayoutMetrics {
public:
    virtual ~LayoutMetrics() = default;

    struct Insets {
        double top = 0;
        double bottom = 0;
    };

    /// How far the root view's safe area lies inside of it.
    [[nodiscard]] virtual Insets safeAreaInsets() const = 0;
    [[nodiscard]] virtual bool isRightToLeft() const = 0;
    /// The frame of a view that constraints do not place.
    [[nodiscard]] virtual std::optional<platform::CGRect> fixedFrame(platform::UIView const& view) const = 0;
    /// The size that a view has of itself, where it has one.
    [[nodiscard]] virtual std::optional<double> intrinsicWidth(platform::UIView const& view) const = 0;
    [[nodiscard]] virtual std::optional<double> intrinsicHeight(platform::UIView const& view, double width) const = 0;
    /// Tells of a constraint that contradicts earlier ones and was left out.
    virtual void didBreak(platform::NSLayoutConstraint const& constraint) const = 0;
};

/// A view and its frame in its superview.
struct LayoutFrame {
    platform::UIView* view = nullptr;
    platform::CGRect frame;
};

/// Solves the active constraints of a whole tree of views for a size of its root: parents before their children, the
/// root first.
///
/// All constraints are equalities of edges, so edges that are equal form classes, and a class is known from any edge in
/// it. Widths come first, because a text's height depends on its width. The toolkit's own constraint layout will not
/// do: it forgets natural sizes when it allocates, knows no height for a width, works in a window only, and its solver,
/// which is the window's, never lets go of views that have left.
[[nodiscard]] std::vector<LayoutFrame> solveLayout(
    platform::UIView& root, double width, double height, LayoutMetrics const& metrics);

}
