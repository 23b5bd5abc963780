#include "ZelvoraAdapters/shared/Layout/internal/LayoutReport.h"

#include "ZelvoraAdapters/shared/Layout/anchorText.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"

#include <optional>
#include <string>
#include <utility>

namespace zelvora::shared {

namespace {

using platform::NSLayoutAnchor;
using platform::NSLayoutConstraint;
using platform::numberText;
using Kind = LayoutAmbiguity::Kind;

class Report final {
public:
    Report(
        LayoutTree const& tree, LayoutAxis const& horizontal, LayoutAxis const& vertical, LayoutMetrics const& metrics)
        : m_tree(tree)
        , m_horizontal(horizontal)
        , m_vertical(vertical)
        , m_metrics(metrics)
    {
    }

    std::vector<LayoutAmbiguity> write()
    {
        for (std::size_t index = 0; index < m_tree.nodes().size(); ++index) {
            checkPlace(index, m_vertical);
            checkPlace(index, m_horizontal);
            for (auto const& constraint : m_tree.nodes()[index].view->constraints())
                check(constraint, m_vertical.concerns(constraint) ? m_vertical : m_horizontal);
        }
        return std::move(m_ambiguities);
    }

private:
    static bool isVertical(LayoutAxis const& axis) { return axis.orientation() == LayoutAxis::Orientation::Vertical; }

    void checkPlace(std::size_t index, LayoutAxis const& axis)
    {
        bool const hasBegin = axis.isBeginDetermined(index);
        bool const hasEnd = axis.isEndDetermined(index);
        if (!hasBegin)
            add(Kind::Placement, index, isVertical(axis) ? " has no top edge" : " has no leading edge");
        if (!hasEnd)
            add(Kind::Placement, index, isVertical(axis) ? " has no bottom edge" : " has no trailing edge");
        if (hasBegin && hasEnd)
            checkLength(index, axis);
        if (auto const fixed = axis.fixedBeginOf(index); fixed && differ(*fixed, axis.beginOf(index)))
            add(Kind::Placement, index,
                " is placed by its own frame and by constraints that differ: " + both(*fixed, axis.beginOf(index)));
    }

    void checkLength(std::size_t index, LayoutAxis const& axis)
    {
        std::string const name = isVertical(axis) ? "height" : "width";
        double const length = axis.signedLengthOf(index);
        if (length < 0) {
            add(Kind::Placement, index, " has a negative " + name + ": " + numberText(length));
            return;
        }
        auto const& view = *m_tree.nodes()[index].view;
        auto const content = isVertical(axis) ? m_metrics.intrinsicHeight(view, m_horizontal.lengthOf(index))
                                              : m_metrics.intrinsicWidth(view);
        if (content && length < *content && differ(length, *content))
            add(Kind::Placement, index,
                " is squeezed below the " + name + " of its content: " + both(length, *content));
    }

    // Only a constraint that was left out can differ, or one that moves the edge of a safe area.
    void check(NSLayoutConstraint const& constraint, LayoutAxis const& axis)
    {
        auto const& second = constraint.secondAnchor();
        auto const firstPosition = axis.positionOf(constraint.firstAnchor());
        auto const secondPosition = axis.positionOf(second);
        if (!firstPosition || !secondPosition || !differ(*firstPosition, *secondPosition))
            return;
        add(Kind::BrokenConstraint, m_tree.indexOf(*constraint.firstAnchor().view),
            '.' + anchorText(constraint.firstAnchor()) + " cannot equal " + m_tree.pathOf(m_tree.indexOf(*second.view))
                + '.' + anchorText(second) + ": " + both(*firstPosition, *secondPosition));
    }

    static std::string both(double first, double second) { return numberText(first) + " and " + numberText(second); }

    void add(Kind kind, std::size_t index, std::string const& what)
    {
        m_ambiguities.push_back({ kind, m_tree.pathOf(index) + what });
    }

    LayoutTree const& m_tree;
    LayoutAxis const& m_horizontal;
    LayoutAxis const& m_vertical;
    LayoutMetrics const& m_metrics;
    std::vector<LayoutAmbiguity> m_ambiguities;
};

}

std::vector<LayoutAmbiguity> findAmbiguities(
    LayoutTree const& tree, LayoutAxis const& horizontal, LayoutAxis const& vertical, LayoutMetrics const& metrics)
{
    return Report(tree, horizontal, vertical, metrics).write();
}

}
