#pragma once

#include "ZelvoraAdapters/shared/Layout/internal/LayoutTree.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace zelvora::shared {

/// One axis of a tree of views: where each view begins (its top or leading edge) and ends.
///
/// All constraints are equalities of edges, so edges that are equal form a class, and the whole class is known as soon
/// as one of its edges is. Positions grow from the root's top or leading edge.
class LayoutAxis final {
public:
    enum class Orientation : std::uint8_t { Horizontal, Vertical };
    /// The edge of the superview from which fixed frames are measured.
    enum class FixedFrom : std::uint8_t { Begin, End };
    struct Extent {
        double offset = 0;
        double length = 0;
    };
    struct Insets {
        double begin = 0;
        double end = 0;
    };
    using IntrinsicLength = std::function<std::optional<double>(std::size_t)>;

    /// The tree outlives the axis.
    LayoutAxis(LayoutTree const& tree, Orientation orientation, FixedFrom fixedFrom);

    void setRoot(Extent extent, Insets safeArea);
    void setFixed(std::size_t index, Extent extent) { m_fixed[index] = extent; }
    /// Takes in the constraints of all views. Those that contradict earlier ones are left out.
    void constrain();
    /// Places every view, after everything above.
    void solve(IntrinsicLength const& intrinsicLength);

    /// After `solve`.
    [[nodiscard]] double beginOf(std::size_t index) const { return *valueOf(beginEdge(index)); }
    /// Never negative.
    [[nodiscard]] double lengthOf(std::size_t index) const;
    /// Negative for a view that the constraints turn upside down.
    [[nodiscard]] double signedLengthOf(std::size_t index) const;
    /// Whether something determines the edge, or it was only given a place because every view needs one.
    [[nodiscard]] bool isBeginDetermined(std::size_t index) const { return m_determined[beginEdge(index)]; }
    [[nodiscard]] bool isEndDetermined(std::size_t index) const { return m_determined[endEdge(index)]; }
    /// Where the view's fixed frame puts its beginning, if it has one and the superview is determined.
    [[nodiscard]] std::optional<double> fixedBeginOf(std::size_t index) const;
    [[nodiscard]] Orientation orientation() const { return m_orientation; }
    [[nodiscard]] bool concerns(platform::NSLayoutConstraint const& constraint) const;
    /// Where the edge is, if it is determined. An edge of a safe area is where its view's edge puts it, even if a
    /// constraint says otherwise.
    [[nodiscard]] std::optional<double> positionOf(platform::NSLayoutAnchor const& anchor) const;

private:
    static constexpr std::size_t edgesPerView = 4;
    static constexpr std::size_t safe = 2;

    static std::size_t beginEdge(std::size_t index) { return index * edgesPerView; }
    static std::size_t endEdge(std::size_t index) { return (index * edgesPerView) + 1; }
    [[nodiscard]] std::size_t edgeOf(platform::NSLayoutAnchor const& anchor) const;

    [[nodiscard]] std::size_t classOf(std::size_t edge) const;
    [[nodiscard]] std::optional<double> const& valueOf(std::size_t edge) const { return m_values[classOf(edge)]; }
    [[nodiscard]] std::optional<double> safeValueOf(std::size_t edge) const;
    [[nodiscard]] std::optional<double> placeOfFixed(std::size_t index) const;

    /// Each returns whether it found a position that was not known.
    bool learn(std::size_t edge, double value);
    bool complete(std::size_t index, double length);
    bool placeFixedViews();
    bool findSafeAreas();
    bool applyIntrinsicLength(IntrinsicLength const& intrinsicLength);
    bool settleWhatIsOpen();

    void join(platform::NSLayoutConstraint const& constraint);
    void deduce(IntrinsicLength const& intrinsicLength);

    LayoutTree const& m_tree;
    Orientation m_orientation;
    FixedFrom m_fixedFrom;
    double m_safeBegin = 0;
    double m_safeEnd = 0;
    std::vector<std::size_t> m_classes;
    std::vector<std::optional<double>> m_values;
    std::vector<std::optional<Extent>> m_fixed;
    std::vector<bool> m_determined;
};

/// Whether two positions differ by more than arithmetic does.
[[nodiscard]] bool differ(double first, double second);

}
