#include "ZelvoraAdapters/gtk/UIKit/LayoutSolver.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_map>

namespace zelvora::gtk {

using platform::CGRect;
using platform::NSLayoutAnchor;
using platform::NSLayoutAttribute;
using platform::NSLayoutConstraint;
using platform::UIView;

namespace {

struct Node {
    UIView* view = nullptr;
    std::size_t parent = 0;
};

/// The views of a tree, parents before their children.
struct Tree {
    std::vector<Node> nodes;
    std::unordered_map<UIView const*, std::size_t> indices;

    void add(UIView& view, std::size_t parent)
    {
        auto const index = nodes.size();
        indices.emplace(&view, index);
        nodes.push_back({ &view, parent });
        for (auto const& child : view.subviews())
            add(*child, index);
    }
};

enum class Direction { Horizontal, Vertical };

Direction directionOf(NSLayoutAnchor const& anchor)
{
    bool const isVertical = anchor.attribute == NSLayoutAttribute::Top || anchor.attribute == NSLayoutAttribute::Bottom;
    return isVertical ? Direction::Vertical : Direction::Horizontal;
}

/// A fixed place on one axis, from the superview's low edge.
struct Extent {
    double offset = 0;
    double size = 0;
};

/// One axis of the tree. Positions are those of the root, growing from its top or its leading edge.
class Axis final {
public:
    using IntrinsicSize = std::function<std::optional<double>(std::size_t)>;

    Axis(Tree const& tree, Direction direction) : m_tree(tree), m_direction(direction)
    {
        for (std::size_t edge = 0; edge < tree.nodes.size() * edgesPerView; ++edge)
            m_classes.push_back(edge);
        m_values.resize(m_classes.size());
        m_fixed.resize(tree.nodes.size());
    }

    void setRoot(double size, double lowInset, double highInset)
    {
        m_safeLow = lowInset;
        m_safeHigh = size - highInset;
        learn(low(0), 0);
        learn(high(0), size);
        learn(low(0) + safe, m_safeLow);
        learn(high(0) + safe, m_safeHigh);
    }

    void setFixed(std::size_t index, Extent extent) { m_fixed[index] = extent; }

    void constrain(LayoutMetrics const& metrics)
    {
        for (auto const& node : m_tree.nodes) {
            for (auto const& constraint : node.view->constraints()) {
                if (directionOf(constraint.firstAnchor()) == m_direction && !join(constraint))
                    metrics.didBreak(constraint);
            }
        }
    }

    void solve(IntrinsicSize const& intrinsicSize)
    {
        while (placeFixedViews() || findSafeAreas() || applyIntrinsicSize(intrinsicSize) || settleWhatIsOpen()) { }
    }

    [[nodiscard]] double lowOf(std::size_t index) const { return *valueOf(low(index)); }
    [[nodiscard]] double sizeOf(std::size_t index) const { return std::max(0.0, *valueOf(high(index)) - lowOf(index)); }

private:
    static constexpr std::size_t edgesPerView = 4;
    static constexpr std::size_t safe = 2;

    static std::size_t low(std::size_t index) { return index * edgesPerView; }
    static std::size_t high(std::size_t index) { return (index * edgesPerView) + 1; }

    [[nodiscard]] std::size_t classOf(std::size_t edge) const
    {
        while (m_classes[edge] != edge)
            edge = m_classes[edge];
        return edge;
    }

    [[nodiscard]] std::optional<double> const& valueOf(std::size_t edge) const { return m_values[classOf(edge)]; }

    bool learn(std::size_t edge, double value)
    {
        auto& known = m_values[classOf(edge)];
        if (known)
            return false;
        known = value;
        return true;
    }

    [[nodiscard]] std::size_t edgeOf(NSLayoutAnchor const& anchor) const
    {
        auto const index = m_tree.indices.at(anchor.view);
        bool const isLow = anchor.attribute == NSLayoutAttribute::Top || anchor.attribute == NSLayoutAttribute::Leading;
        return (isLow ? low(index) : high(index)) + (anchor.item == NSLayoutAnchor::Item::SafeArea ? safe : 0);
    }

    bool join(NSLayoutConstraint const& constraint)
    {
        auto const first = classOf(edgeOf(constraint.firstAnchor()));
        auto const second = classOf(edgeOf(constraint.secondAnchor()));
        if (first == second)
            return true;
        if (m_values[first] && m_values[second])
            return *m_values[first] == *m_values[second];
        if (!m_values[second])
            m_values[second] = m_values[first];
        m_classes[first] = second;
        return true;
    }

    bool placeFixedViews()
    {
        bool hasLearned = false;
        for (std::size_t index = 1; index < m_tree.nodes.size(); ++index) {
            auto const& parentLow = valueOf(low(m_tree.nodes[index].parent));
            if (!m_fixed[index] || !parentLow)
                continue;
            double const place = *parentLow + m_fixed[index]->offset;
            hasLearned |= learn(low(index), place);
            hasLearned |= learn(high(index), place + m_fixed[index]->size);
        }
        return hasLearned;
    }

    bool findSafeAreas()
    {
        bool hasLearned = false;
        for (std::size_t index = 1; index < m_tree.nodes.size(); ++index) {
            if (auto const& edge = valueOf(low(index)))
                hasLearned |= learn(low(index) + safe, std::max(*edge, m_safeLow));
            if (auto const& edge = valueOf(high(index)))
                hasLearned |= learn(high(index) + safe, std::min(*edge, m_safeHigh));
        }
        return hasLearned;
    }

    // One view at a time: what follows from it comes before another view's wish.
    bool applyIntrinsicSize(IntrinsicSize const& intrinsicSize)
    {
        for (std::size_t index = 1; index < m_tree.nodes.size(); ++index) {
            bool const hasLow = valueOf(low(index)).has_value();
            if (hasLow == valueOf(high(index)).has_value())
                continue;
            if (auto const size = intrinsicSize(index))
                return complete(index, *size);
        }
        return false;
    }

    bool complete(std::size_t index, double size)
    {
        if (auto const& edge = valueOf(low(index)))
            return learn(high(index), *edge + size);
        return learn(low(index), *valueOf(high(index)) - size);
    }

    // No constraint says more: an open end gives an empty view, no end at all one at its superview's start.
    bool settleWhatIsOpen()
    {
        for (std::size_t index = 1; index < m_tree.nodes.size(); ++index) {
            if (valueOf(low(index)).has_value() != valueOf(high(index)).has_value())
                return complete(index, 0);
        }
        for (std::size_t index = 1; index < m_tree.nodes.size(); ++index) {
            auto const& parentLow = valueOf(low(m_tree.nodes[index].parent));
            if (!valueOf(low(index)) && parentLow)
                return learn(low(index), *parentLow);
        }
        return false;
    }

    Tree const& m_tree;
    Direction m_direction;
    double m_safeLow = 0;
    double m_safeHigh = 0;
    std::vector<std::size_t> m_classes;
    std::vector<std::optional<double>> m_values;
    std::vector<std::optional<Extent>> m_fixed;
};

}

std::vector<LayoutFrame> solveLayout(UIView& root, double width, double height, LayoutMetrics const& metrics)
{
    Tree tree;
    tree.add(root, 0);
    Axis horizontal(tree, Direction::Horizontal);
    Axis vertical(tree, Direction::Vertical);
    for (std::size_t index = 1; index < tree.nodes.size(); ++index) {
        if (auto const frame = metrics.fixedFrame(*tree.nodes[index].view)) {
            horizontal.setFixed(index, { frame->x, frame->width });
            vertical.setFixed(index, { frame->y, frame->height });
        }
    }

    horizontal.setRoot(width, 0, 0);
    horizontal.constrain(metrics);
    horizontal.solve([&](std::size_t index) { return metrics.intrinsicWidth(*tree.nodes[index].view); });

    auto const insets = metrics.safeAreaInsets();
    vertical.setRoot(height, insets.top, insets.bottom);
    vertical.constrain(metrics);
    vertical.solve(
        [&](std::size_t index) { return metrics.intrinsicHeight(*tree.nodes[index].view, horizontal.sizeOf(index)); });

    std::vector<LayoutFrame> frames { { &root, { 0, 0, width, height } } };
    for (std::size_t index = 1; index < tree.nodes.size(); ++index) {
        auto const& [view, parent] = tree.nodes[index];
        CGRect frame { horizontal.lowOf(index) - horizontal.lowOf(parent),
            vertical.lowOf(index) - vertical.lowOf(parent), horizontal.sizeOf(index), vertical.sizeOf(index) };
        // Positions grow from the leading edge; a fixed frame is said from the left.
        if (metrics.isRightToLeft() && !metrics.fixedFrame(*view))
            frame.x = horizontal.sizeOf(parent) - frame.x - frame.width;
        frames.push_back({ view, frame });
    }
    return frames;
}

}
