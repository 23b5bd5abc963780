#pragma once

#include "ZelvoraAdapters/shared/Layout/SafeAreaInsets.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/Geometry.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::shared {

enum class LayoutDirection : std::uint8_t { LeftToRight, RightToLeft };

/// The space that a tree of views is laid out in.
struct LayoutSpace {
    /// The root view's frame.
    platform::CGRect frame;
    /// How far the safe area lies inside the root view.
    SafeAreaInsets safeAreaInsets {};
    /// In a right-to-left layout the leading edge is the right one.
    LayoutDirection direction = LayoutDirection::LeftToRight;
};

/// What the native views know about themselves. Only called within `solveLayout`.
class ZELVORA_API LayoutMetrics {
public:
    virtual ~LayoutMetrics() = default;

    /// The frame, in its superview, of a view that translates its autoresizing mask; absent for a view that constraints
    /// place. Not asked for the root.
    [[nodiscard]] virtual std::optional<platform::CGRect> fixedFrame(platform::UIView const& view) const = 0;
    /// The size that the content gives the view, if any.
    [[nodiscard]] virtual std::optional<double> intrinsicWidth(platform::UIView const& view) const = 0;
    [[nodiscard]] virtual std::optional<double> intrinsicHeight(platform::UIView const& view, double width) const = 0;
};

struct LayoutFrame {
    platform::UIView* view = nullptr;
    /// In the superview; the root's is that of the space.
    platform::CGRect frame;
};

/// One thing that the constraints left open or that contradicts something else.
struct LayoutAmbiguity {
    enum class Kind : std::uint8_t {
        /// A view lacks an edge, is too small, or has a frame that differs from its place.
        Placement,
        /// A constraint contradicts earlier ones and was left out.
        BrokenConstraint,
    };

    Kind kind = Kind::Placement;
    /// Such as "root/2/0 has no bottom edge": views are named by their path of indices among subviews. Positions count
    /// from the origin of the root's frame, horizontally in the direction of the layout.
    std::string sentence;
};

struct SolvedLayout {
    /// Every view of the tree, parents before their children, the root first.
    std::vector<LayoutFrame> frames;
    /// Empty if the constraints determine every view.
    std::vector<LayoutAmbiguity> ambiguities;
};

/// Places all views of a tree, hidden ones too, by their active constraints.
///
/// Among constraints that contradict one another the earlier one wins. Where the constraints leave a view's width or
/// height open, its intrinsic size decides. A view that is still open has no width or height, and if neither edge is
/// known it starts where its superview starts. Widths are solved before heights, because the height of a text depends
/// on its width.
[[nodiscard]] ZELVORA_API SolvedLayout solveLayout(
    platform::UIView& root, LayoutSpace const& space, LayoutMetrics const& metrics);

}
