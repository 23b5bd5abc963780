#include "ZelvoraAdapters/shared/Layout/LayoutSolver.h"

#include "ZelvoraAdapters/shared/Layout/internal/LayoutAxis.h"
#include "ZelvoraAdapters/shared/Layout/internal/LayoutReport.h"
#include "ZelvoraAdapters/shared/Layout/internal/LayoutTree.h"

namespace zelvora::shared {

namespace {

std::vector<LayoutFrame> framesOf(
    LayoutTree const& tree, LayoutSpace const& space, LayoutAxis const& horizontal, LayoutAxis const& vertical)
{
    auto const& nodes = tree.nodes();
    std::vector<LayoutFrame> frames { { nodes.front().view, space.frame } };
    for (std::size_t index = 1; index < nodes.size(); ++index) {
        auto const parent = nodes[index].parent;
        platform::CGRect frame { horizontal.beginOf(index) - horizontal.beginOf(parent),
            vertical.beginOf(index) - vertical.beginOf(parent), horizontal.lengthOf(index), vertical.lengthOf(index) };
        if (space.direction == LayoutDirection::RightToLeft)
            frame.x = horizontal.lengthOf(parent) - frame.x - frame.width;
        frames.push_back({ nodes[index].view, frame });
    }
    return frames;
}

}

SolvedLayout solveLayout(platform::UIView& root, LayoutSpace const& space, LayoutMetrics const& metrics)
{
    using Orientation = LayoutAxis::Orientation;
    using FixedFrom = LayoutAxis::FixedFrom;
    LayoutTree const tree(root);
    // Frames are measured from the left edge, which is where a view ends in a right-to-left layout.
    bool const isRightToLeft = space.direction == LayoutDirection::RightToLeft;
    LayoutAxis horizontal(tree, Orientation::Horizontal, isRightToLeft ? FixedFrom::End : FixedFrom::Begin);
    LayoutAxis vertical(tree, Orientation::Vertical, FixedFrom::Begin);
    auto const viewAt = [&tree](std::size_t index) -> platform::UIView& { return *tree.nodes()[index].view; };
    for (std::size_t index = 1; index < tree.nodes().size(); ++index) {
        if (auto const frame = metrics.fixedFrame(viewAt(index))) {
            horizontal.setFixed(index, { frame->x, frame->width });
            vertical.setFixed(index, { frame->y, frame->height });
        }
    }

    horizontal.setRoot({ space.frame.x, space.frame.width }, {});
    horizontal.constrain();
    horizontal.solve([&](std::size_t index) { return metrics.intrinsicWidth(viewAt(index)); });

    auto const& insets = space.safeAreaInsets;
    vertical.setRoot({ space.frame.y, space.frame.height }, { insets.top, insets.bottom });
    vertical.constrain();
    vertical.solve(
        [&](std::size_t index) { return metrics.intrinsicHeight(viewAt(index), horizontal.lengthOf(index)); });

    return { framesOf(tree, space, horizontal, vertical), findAmbiguities(tree, horizontal, vertical, metrics) };
}

}
