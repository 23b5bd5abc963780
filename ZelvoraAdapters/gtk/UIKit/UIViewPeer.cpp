#include "ZelvoraAdapters/gtk/UIKit/UIViewPeer.h"

#include "ZelvoraAdapters/gtk/Platform.h"
#include "ZelvoraAdapters/gtk/UIKit/EdgePan.h"
#include "ZelvoraAdapters/gtk/UIKit/UIViewControllerPeer.h"
#include "ZelvoraAdapters/gtk/UIKit/takeOutOfItsPlace.h"
#include "ZelvoraAdapters/shared/Layout/LayoutSolver.h"
#include "ZelvoraAdapters/shared/Layout/rootOf.h"
#include "ZelvoraAdapters/shared/Screens/GestureArbitration.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zelvora::gtk {

using platform::CGRect;
using platform::NSLayoutConstraint;
using platform::UIColor;
using platform::UIView;

namespace {

CGRect between(CGRect const& from, CGRect const& to, double progress)
{
    auto const mix = [progress](double first, double last) { return first + ((last - first) * progress); };
    return { mix(from.x, to.x), mix(from.y, to.y), mix(from.width, to.width), mix(from.height, to.height) };
}

bool isShownByView(GtkWidget* widget)
{
    auto* parent = gtk_widget_get_parent(widget);
    return parent && dynamic_cast<UIViewPeer*>(canvasClient(parent));
}

double naturalSize(GtkWidget* widget, GtkOrientation orientation, int forSize)
{
    int natural = 0;
    gtk_widget_measure(widget, orientation, forSize, nullptr, &natural, nullptr, nullptr);
    return natural;
}

}

class UIViewPeer::Metrics final : public shared::LayoutMetrics {
public:
    // shared::LayoutMetrics
    [[nodiscard]] std::optional<CGRect> fixedFrame(UIView const& view) const override
    {
        auto const& peer = UIViewPeer::of(view);
        return peer.m_translates ? std::optional(peer.m_frame) : std::nullopt;
    }

    [[nodiscard]] std::optional<double> intrinsicWidth(UIView const& view) const override
    {
        return intrinsicSize(view, GTK_ORIENTATION_HORIZONTAL, -1);
    }

    [[nodiscard]] std::optional<double> intrinsicHeight(UIView const& view, double width) const override
    {
        return intrinsicSize(view, GTK_ORIENTATION_VERTICAL, static_cast<int>(std::lround(width)));
    }

private:
    static std::optional<double> intrinsicSize(UIView const& view, GtkOrientation orientation, int forSize)
    {
        auto const& peer = UIViewPeer::of(view);
        if (peer.m_sizing == Sizing::None)
            return std::nullopt;
        int smallest = 0;
        auto const across =
            orientation == GTK_ORIENTATION_VERTICAL ? GTK_ORIENTATION_HORIZONTAL : GTK_ORIENTATION_VERTICAL;
        gtk_widget_measure(peer.m_content.get(), across, -1, &smallest, nullptr, nullptr, nullptr);
        return naturalSize(peer.m_content.get(), orientation, forSize < 0 ? forSize : std::max(smallest, forSize));
    }
};

UIViewPeer::UIViewPeer(UIView& owner, CGRect frame)
    : m_owner(owner)
    , m_canvas(makeCanvas(*this))
    , m_frame(frame)
    , m_shownFrame(frame)
{
}

UIViewPeer::UIViewPeer(UIView& owner, CGRect frame, GtkWidget* content, Sizing sizing) : UIViewPeer(owner, frame)
{
    m_content = sink(content);
    m_sizing = sizing;
    if (isShownByView(content))
        g_log("Zelvora", G_LOG_LEVEL_WARNING,
            "A %s is in another view, which loses it: make a new widget for each view", G_OBJECT_TYPE_NAME(content));
    takeOutOfItsPlace(content);
    gtk_widget_set_parent(content, widget());
}

UIViewPeer::~UIViewPeer()
{
    m_motion.stop();
    retireCanvas(widget());
}

CGRect UIViewPeer::bounds() const
{
    return { 0, 0, m_frame.width, m_frame.height };
}

void UIViewPeer::addSubview(UIView& child)
{
    auto* added = of(child).widget();
    gtk_widget_insert_before(added, widget(), nullptr);
    gtk_widget_set_child_visible(added, !child.isHidden());
}

void UIViewPeer::removeSubview(UIView& child)
{
    auto* removed = of(child).widget();
    if (gtk_widget_get_parent(removed) == widget())
        gtk_widget_unparent(removed);
}

void UIViewPeer::bringSubviewToFront(UIView& child)
{
    gtk_widget_insert_before(of(child).widget(), widget(), nullptr);
}

void UIViewPeer::setHidden(bool hidden)
{
    // A widget that is not visible would lose its place; one that is not child-visible is only not shown.
    if (!m_owner.superview())
        return;
    gtk_widget_set_child_visible(widget(), !hidden);
    // The toolkit does not always draw the superview again when a child is shown.
    gtk_widget_queue_draw(of(*m_owner.superview()).widget());
}

void UIViewPeer::setBackgroundColor(UIColor color)
{
    m_backgroundColor = color;
    gtk_widget_queue_draw(widget());
}

void UIViewPeer::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    m_translates = translates;
    gtk_widget_queue_resize(widget());
}

void UIViewPeer::activate(NSLayoutConstraint const& constraint)
{
    requestLayout(constraint);
}

void UIViewPeer::deactivate(NSLayoutConstraint const& constraint)
{
    requestLayout(constraint);
}

void UIViewPeer::layoutIfNeeded()
{
    of(shared::rootOf(m_owner)).layOutTree();
}

void UIViewPeer::addGestureRecognizer(platform::UIGestureRecognizer&)
{
    if (auto* root = gtk_widget_get_root(widget()); GTK_IS_WINDOW(root))
        watchEdgePans(GTK_WINDOW(root));
}

CanvasClient::Size UIViewPeer::measureCanvas(GtkOrientation orientation, int forSize)
{
    // A view takes what its container gives it.
    if (m_sizing == Sizing::None)
        return {};
    return { 0, static_cast<int>(naturalSize(m_content.get(), orientation, forSize)) };
}

void UIViewPeer::allocateCanvas(int width, int height)
{
    if (!m_owner.superview()) {
        m_isAllocating = true;
        m_frame = { 0, 0, static_cast<double>(width), static_cast<double>(height) };
        layOutTree();
        m_isAllocating = false;
    }
    // The host may have put its widget elsewhere.
    if (m_content && gtk_widget_get_parent(m_content.get()) == widget())
        allocateChild(m_content.get(), 0, 0, width, height);
    for (auto const& child : m_owner.subviews()) {
        auto const& peer = of(*child);
        auto const& frame = peer.m_shownFrame;
        allocateChild(peer.widget(), frame.x, frame.y, frame.width, frame.height);
    }
}

void UIViewPeer::drawCanvas(GtkSnapshot* snapshot)
{
    auto const component = [](double value) { return static_cast<float>(value); };
    GdkRGBA const color { component(m_backgroundColor.red), component(m_backgroundColor.green),
        component(m_backgroundColor.blue), component(m_backgroundColor.alpha) };
    if (color.alpha <= 0)
        return;
    graphene_rect_t const area { { 0, 0 },
        { static_cast<float>(gtk_widget_get_width(widget())), static_cast<float>(gtk_widget_get_height(widget())) } };
    gtk_snapshot_append_color(snapshot, &color, &area);
}

void UIViewPeer::canvasDidEnterWindow()
{
    if (auto* root = gtk_widget_get_root(widget()); GTK_IS_WINDOW(root) && !m_owner.gestureRecognizers().empty())
        watchEdgePans(GTK_WINDOW(root));
    if (m_controller)
        m_controller->viewDidEnterWindow();
}

void UIViewPeer::canvasWillLeaveWindow()
{
    if (m_controller)
        m_controller->viewWillLeaveWindow();
}

void UIViewPeer::canvasWasUnmapped()
{
    m_motion.finish();
}

void UIViewPeer::collectEdgePanTargets(std::vector<EdgePanTarget>& targets)
{
    for (auto const& recognizer : m_owner.gestureRecognizers()) {
        if (shared::watchesEdge(*recognizer, platform::UIRectEdge::Left))
            targets.push_back({ recognizer });
    }
}

void UIViewPeer::layOutTree()
{
    bool const isRightToLeft = gtk_widget_get_direction(widget()) == GTK_TEXT_DIR_RTL;
    shared::LayoutSpace const space {
        .frame = { 0, 0, m_frame.width, m_frame.height },
        // Only a screen reaches under the system's bars.
        .safeAreaInsets = m_controller ? Platform::current().safeAreaInsets() : SafeAreaInsets {},
        .direction = isRightToLeft ? shared::LayoutDirection::RightToLeft : shared::LayoutDirection::LeftToRight,
    };
    auto const layout = shared::solveLayout(m_owner, space, Metrics());
    for (auto const& [view, frame] : layout.frames) {
        if (view != &m_owner)
            of(*view).setFrame(frame);
    }
    for (auto const& [kind, sentence] : layout.ambiguities) {
        if (kind == shared::LayoutAmbiguity::Kind::BrokenConstraint)
            g_log("Zelvora", G_LOG_LEVEL_WARNING, "Conflicting constraint ignored: %s", sentence.c_str());
    }
}

void UIViewPeer::setFrame(CGRect frame)
{
    if (frame == m_frame)
        return;
    m_frame = frame;
    auto const duration = currentAnimationDuration();
    if (!duration || *duration <= 0 || !canAnimate(widget())) {
        m_motion.stop();
        setShownFrame(frame);
        return;
    }
    auto const from = m_shownFrame;
    m_motion.start(widget(), *duration,
        [this, from, frame](double progress) { setShownFrame(progress < 1 ? between(from, frame, progress) : frame); });
}

void UIViewPeer::setShownFrame(CGRect frame)
{
    m_shownFrame = frame;
    auto* superview = m_owner.superview();
    // During an allocation the superview is about to be allocated anyway.
    if (superview && !of(shared::rootOf(*superview)).m_isAllocating)
        gtk_widget_queue_allocate(of(*superview).widget());
}

void UIViewPeer::requestLayout(NSLayoutConstraint const& constraint)
{
    for (auto const& anchor : { constraint.firstAnchor(), constraint.secondAnchor() }) {
        auto* view = anchor.view->superview() ? anchor.view->superview() : anchor.view;
        gtk_widget_queue_resize(of(*view).widget());
    }
}

}
