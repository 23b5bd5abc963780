#include "ZelvoraAdapters/memory/UIKit/LayoutSolver.h"

#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"
#include "ZelvoraAdapters/memory/UIKit/anchorText.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace zelvora::memory {

namespace {

using platform::CGRect;
using platform::NSLayoutAnchor;
using platform::UIView;
using enum platform::NSLayoutAttribute;
using Attribute = platform::NSLayoutAttribute;

/// The edges between which a view lies in one direction.
struct Axis {
    Attribute begin;
    Attribute end;
    char const* extent;
    std::optional<double> IntrinsicSize::* intrinsic;
    double CGRect::* origin;
    double CGRect::* length;
};

constexpr std::array axes {
    Axis { Top, Bottom, "height", &IntrinsicSize::height, &CGRect::y, &CGRect::height },
    Axis { Leading, Trailing, "width", &IntrinsicSize::width, &CGRect::x, &CGRect::width },
};

bool differ(double first, double second)
{
    return std::abs(first - second) > 1e-6;
}

class Solver final {
public:
    Solver(UIView& root, CGRect frame, SafeAreaInsets insets)
        : m_root(root)
        , m_safeTop(frame.y + insets.top)
        , m_safeBottom(frame.y + frame.height - insets.bottom)
    {
        collect(root, "root");
        for (auto const& axis : axes)
            place(root, axis, frame.*axis.origin, frame.*axis.length);
    }

    Layout solve()
    {
        do {
            do {
                m_learnt = false;
                for (auto const& [view, path] : m_views)
                    deduceFrom(*view);
            } while (m_learnt);
            // Weaker than every constraint, so one at a time and only when the constraints say no more.
        } while (useIntrinsicSize());
        for (auto const& [view, path] : m_views)
            finish(*view, path);
        return std::move(m_layout);
    }

private:
    using Edge = std::tuple<UIView const*, NSLayoutAnchor::Item, Attribute>;

    static Edge edge(UIView const& view, Attribute attribute)
    {
        return { &view, NSLayoutAnchor::Item::View, attribute };
    }
    static Edge edge(NSLayoutAnchor const& anchor) { return { anchor.view, anchor.item, anchor.attribute }; }

    void collect(UIView& view, std::string const& path)
    {
        m_views.emplace_back(&view, path);
        m_paths.emplace(&view, path);
        for (std::size_t index = 0; index < view.subviews().size(); ++index)
            collect(*view.subviews()[index], path + '/' + std::to_string(index));
    }

    [[nodiscard]] std::optional<double> value(Edge const& edge) const
    {
        auto const found = m_known.find(edge);
        return found == m_known.end() ? std::nullopt : std::optional(found->second);
    }

    void learn(Edge const& edge, double value) { m_learnt |= m_known.emplace(edge, value).second; }

    void place(UIView const& view, Axis const& axis, double origin, double length)
    {
        learn(edge(view, axis.begin), origin);
        learn(edge(view, axis.end), origin + length);
    }

    /// Where the view's own frame puts it, if that is what places it.
    [[nodiscard]] std::optional<double> originByFrame(UIView const& view, Axis const& axis) const
    {
        if (&view == &m_root || !peer(view).translatesAutoresizingMaskIntoConstraints())
            return std::nullopt;
        auto const around = value(edge(*view.superview(), axis.begin));
        return around ? std::optional(*around + peer(view).ownFrame().*axis.origin) : std::nullopt;
    }

    void deduceFrom(UIView const& view)
    {
        for (auto const& axis : axes) {
            if (auto const origin = originByFrame(view, axis))
                place(view, axis, *origin, peer(view).ownFrame().*axis.length);
        }
        if (auto const top = value(edge(view, Top)))
            learn({ &view, NSLayoutAnchor::Item::SafeArea, Top }, std::max(*top, m_safeTop));
        if (auto const bottom = value(edge(view, Bottom)))
            learn({ &view, NSLayoutAnchor::Item::SafeArea, Bottom }, std::min(*bottom, m_safeBottom));
        for (auto const& constraint : view.constraints()) {
            auto const first = edge(constraint.firstAnchor());
            auto const second = edge(constraint.secondAnchor());
            if (auto const known = value(first))
                learn(second, *known);
            if (auto const known = value(second))
                learn(first, *known);
        }
    }

    bool useIntrinsicSize()
    {
        for (auto const& [view, path] : m_views) {
            for (auto const& axis : axes) {
                auto const size = peer(*view).intrinsicSize().*axis.intrinsic;
                auto const begin = value(edge(*view, axis.begin));
                auto const end = value(edge(*view, axis.end));
                if (!size || begin.has_value() == end.has_value())
                    continue;
                place(*view, axis, begin ? *begin : *end - *size, *size);
                return true;
            }
        }
        return false;
    }

    void finish(UIView& view, std::string const& path)
    {
        CGRect frame;
        for (auto const& axis : axes) {
            auto const knownBegin = value(edge(view, axis.begin));
            auto const knownEnd = value(edge(view, axis.end));
            double const around = view.superview() ? m_origins[view.superview()].*axis.origin : 0;
            double const begin = knownBegin.value_or(knownEnd.value_or(around));
            double const length = knownEnd.value_or(begin) - begin;
            m_origins[&view].*axis.origin = begin;
            frame.*axis.origin = begin - around;
            frame.*axis.length = std::max(length, 0.0);
            if (knownBegin && knownEnd)
                checkLength(view, path, axis, length);
            else
                tellMissing(path, knownBegin ? axis.end : axis.begin);
            if (!knownBegin && !knownEnd)
                tellMissing(path, axis.end);
            if (auto const origin = originByFrame(view, axis))
                expect(path + " is placed by its own frame and by constraints that differ", *origin, begin);
        }
        for (auto const& constraint : view.constraints())
            check(constraint);
        m_layout.frames.push_back({ &view, frame });
    }

    void tellMissing(std::string const& path, Attribute attribute)
    {
        tell(path + " has no " + anchorText({ nullptr, NSLayoutAnchor::Item::View, attribute }) + " edge");
    }

    void checkLength(UIView const& view, std::string const& path, Axis const& axis, double length)
    {
        auto const content = peer(view).intrinsicSize().*axis.intrinsic;
        if (length < 0)
            tell(path + " has a negative " + axis.extent + ": " + platform::numberText(length));
        else if (content && length < *content)
            expect(path + " is squeezed below the " + axis.extent + " of its content", length, *content);
    }

    void check(platform::NSLayoutConstraint const& constraint)
    {
        auto const first = value(edge(constraint.firstAnchor()));
        auto const second = value(edge(constraint.secondAnchor()));
        if (first && second)
            expect(
                name(constraint.firstAnchor()) + " cannot equal " + name(constraint.secondAnchor()), *first, *second);
    }

    void expect(std::string const& complaint, double first, double second)
    {
        if (differ(first, second))
            tell(complaint + ": " + platform::numberText(first) + " and " + platform::numberText(second));
    }

    void tell(std::string sentence) { m_layout.ambiguities.push_back(std::move(sentence)); }
    [[nodiscard]] std::string name(NSLayoutAnchor const& anchor) const
    {
        return m_paths.at(anchor.view) + '.' + anchorText(anchor);
    }

    UIView& m_root;
    double m_safeTop;
    double m_safeBottom;
    std::vector<std::pair<UIView*, std::string>> m_views;
    std::map<UIView const*, std::string> m_paths;
    std::map<Edge, double> m_known;
    bool m_learnt = false;
    std::map<UIView const*, CGRect> m_origins;
    Layout m_layout;
};

}

Layout solveLayout(UIView& root, CGRect frame, SafeAreaInsets insets)
{
    return Solver(root, frame, insets).solve();
}

}
