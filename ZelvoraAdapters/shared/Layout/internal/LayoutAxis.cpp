#include "ZelvoraAdapters/shared/Layout/internal/LayoutAxis.h"

#include <algorithm>
#include <cmath>

namespace zelvora::shared {

using platform::NSLayoutAnchor;
using platform::NSLayoutAttribute;

bool differ(double first, double second)
{
    return std::abs(first - second) > 1e-6;
}

LayoutAxis::LayoutAxis(LayoutTree const& tree, Orientation orientation, FixedFrom fixedFrom)
    : m_tree(tree)
    , m_orientation(orientation)
    , m_fixedFrom(fixedFrom)
{
    auto const count = tree.nodes().size();
    for (std::size_t edge = 0; edge < count * edgesPerView; ++edge)
        m_classes.push_back(edge);
    m_values.resize(m_classes.size());
    m_fixed.resize(count);
}

void LayoutAxis::setRoot(Extent extent, Insets safeArea)
{
    double const end = extent.offset + extent.length;
    m_safeBegin = extent.offset + safeArea.begin;
    m_safeEnd = end - safeArea.end;
    learn(beginEdge(0), extent.offset);
    learn(endEdge(0), end);
    learn(beginEdge(0) + safe, m_safeBegin);
    learn(endEdge(0) + safe, m_safeEnd);
}

void LayoutAxis::constrain()
{
    for (auto const& node : m_tree.nodes()) {
        for (auto const& constraint : node.view->constraints()) {
            if (concerns(constraint))
                join(constraint);
        }
    }
}

void LayoutAxis::solve(IntrinsicLength const& intrinsicLength)
{
    deduce(intrinsicLength);
    for (std::size_t edge = 0; edge < m_classes.size(); ++edge)
        m_determined.push_back(valueOf(edge).has_value());
    while (settleWhatIsOpen())
        deduce(intrinsicLength);
}

double LayoutAxis::lengthOf(std::size_t index) const
{
    return std::max(0.0, signedLengthOf(index));
}

double LayoutAxis::signedLengthOf(std::size_t index) const
{
    return *valueOf(endEdge(index)) - beginOf(index);
}

std::optional<double> LayoutAxis::fixedBeginOf(std::size_t index) const
{
    auto const parent = m_tree.nodes()[index].parent;
    bool const isDetermined = m_fixedFrom == FixedFrom::Begin ? isBeginDetermined(parent) : isEndDetermined(parent);
    return isDetermined ? placeOfFixed(index) : std::nullopt;
}

bool LayoutAxis::concerns(platform::NSLayoutConstraint const& constraint) const
{
    auto const attribute = constraint.firstAnchor().attribute;
    bool const isVertical = attribute == NSLayoutAttribute::Top || attribute == NSLayoutAttribute::Bottom;
    return isVertical == (m_orientation == Orientation::Vertical);
}

std::optional<double> LayoutAxis::positionOf(NSLayoutAnchor const& anchor) const
{
    auto const edge = edgeOf(anchor);
    if (!m_determined[edge])
        return std::nullopt;
    bool const isSafe = anchor.item == NSLayoutAnchor::Item::SafeArea;
    return isSafe && m_determined[edge - safe] ? safeValueOf(edge) : valueOf(edge);
}

std::size_t LayoutAxis::edgeOf(NSLayoutAnchor const& anchor) const
{
    auto const index = m_tree.indexOf(*anchor.view);
    bool const isBegin = anchor.attribute == NSLayoutAttribute::Top || anchor.attribute == NSLayoutAttribute::Leading;
    return (isBegin ? beginEdge(index) : endEdge(index)) + (anchor.item == NSLayoutAnchor::Item::SafeArea ? safe : 0);
}

std::size_t LayoutAxis::classOf(std::size_t edge) const
{
    while (m_classes[edge] != edge)
        edge = m_classes[edge];
    return edge;
}

/// Where the view's own edge puts the edge of its safe area, if the own edge is known.
std::optional<double> LayoutAxis::safeValueOf(std::size_t edge) const
{
    auto const& own = valueOf(edge - safe);
    if (!own)
        return std::nullopt;
    bool const isBegin = (edge - safe) % edgesPerView == 0;
    return isBegin ? std::max(*own, m_safeBegin) : std::min(*own, m_safeEnd);
}

std::optional<double> LayoutAxis::placeOfFixed(std::size_t index) const
{
    auto const parent = m_tree.nodes()[index].parent;
    auto const& edge = valueOf(m_fixedFrom == FixedFrom::Begin ? beginEdge(parent) : endEdge(parent));
    auto const& fixed = m_fixed[index];
    if (!fixed || !edge)
        return std::nullopt;
    return m_fixedFrom == FixedFrom::Begin ? *edge + fixed->offset : *edge - fixed->offset - fixed->length;
}

bool LayoutAxis::learn(std::size_t edge, double value)
{
    auto& known = m_values[classOf(edge)];
    if (known)
        return false;
    known = value;
    return true;
}

bool LayoutAxis::complete(std::size_t index, double length)
{
    if (auto const& begin = valueOf(beginEdge(index)))
        return learn(endEdge(index), *begin + length);
    return learn(beginEdge(index), *valueOf(endEdge(index)) - length);
}

bool LayoutAxis::placeFixedViews()
{
    bool hasLearned = false;
    for (std::size_t index = 1; index < m_fixed.size(); ++index) {
        if (auto const place = placeOfFixed(index)) {
            hasLearned |= learn(beginEdge(index), *place);
            hasLearned |= learn(endEdge(index), *place + m_fixed[index]->length);
        }
    }
    return hasLearned;
}

bool LayoutAxis::findSafeAreas()
{
    bool hasLearned = false;
    for (std::size_t index = 1; index < m_fixed.size(); ++index) {
        for (auto const edge : { beginEdge(index) + safe, endEdge(index) + safe }) {
            if (auto const value = safeValueOf(edge))
                hasLearned |= learn(edge, *value);
        }
    }
    return hasLearned;
}

// Weaker than every constraint, so one view at a time: what follows from it comes before the next view's wish.
bool LayoutAxis::applyIntrinsicLength(IntrinsicLength const& intrinsicLength)
{
    for (std::size_t index = 1; index < m_fixed.size(); ++index) {
        if (valueOf(beginEdge(index)).has_value() == valueOf(endEdge(index)).has_value())
            continue;
        if (auto const length = intrinsicLength(index))
            return complete(index, *length);
    }
    return false;
}

bool LayoutAxis::settleWhatIsOpen()
{
    for (std::size_t index = 1; index < m_fixed.size(); ++index) {
        if (valueOf(beginEdge(index)).has_value() != valueOf(endEdge(index)).has_value())
            return complete(index, 0);
    }
    for (std::size_t index = 1; index < m_fixed.size(); ++index) {
        auto const& parentBegin = valueOf(beginEdge(m_tree.nodes()[index].parent));
        if (!valueOf(beginEdge(index)) && parentBegin)
            return learn(beginEdge(index), *parentBegin);
    }
    return false;
}

void LayoutAxis::join(platform::NSLayoutConstraint const& constraint)
{
    auto const first = classOf(edgeOf(constraint.firstAnchor()));
    auto const second = classOf(edgeOf(constraint.secondAnchor()));
    bool const areKnown = m_values[first] && m_values[second];
    if (first == second || (areKnown && differ(*m_values[first], *m_values[second])))
        return;
    if (!m_values[second])
        m_values[second] = m_values[first];
    m_classes[first] = second;
}

void LayoutAxis::deduce(IntrinsicLength const& intrinsicLength)
{
    while (placeFixedViews() || findSafeAreas() || applyIntrinsicLength(intrinsicLength)) { }
}

}
