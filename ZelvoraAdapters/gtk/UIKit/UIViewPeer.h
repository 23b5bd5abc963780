#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Canvas.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstdint>
#include <vector>

namespace zelvora::gtk {

class UIViewControllerPeer;

/// A view as a canvas that contains the canvases of its subviews, back to front. It may have a GTK widget as its
/// content, which fills it beneath the subviews.
///
/// The root view of a tree lays out the whole tree, for the size that its container gave it. A view's bounds are those
/// of the latest layout; an animation may still be moving the widget there. As on the phone, a hidden view keeps its
/// place.
class UIViewPeer final
    : public platform::UIView::Peer
    , public CanvasClient {
public:
    /// Whether the content's natural size is the view's intrinsic size.
    enum class Sizing : std::uint8_t { None, OfContent };

    UIViewPeer(platform::UIView& owner, platform::CGRect frame);
    /// Removes the content from its current parent.
    UIViewPeer(platform::UIView& owner, platform::CGRect frame, GtkWidget* content, Sizing sizing);
    UIViewPeer(UIViewPeer const&) = delete;
    UIViewPeer& operator=(UIViewPeer const&) = delete;
    ~UIViewPeer() override;

    [[nodiscard]] static UIViewPeer& of(platform::UIView const& view) { return static_cast<UIViewPeer&>(view.peer()); }

    [[nodiscard]] GtkWidget* widget() const { return m_canvas.get(); }

    /// The controller whose root view this is; it is told when the view enters and leaves a window. Reset by the
    /// controller's destructor.
    void setController(UIViewControllerPeer* controller) { m_controller = controller; }
    [[nodiscard]] UIViewControllerPeer* controller() const { return m_controller; }

    // platform::UIView::Peer
    [[nodiscard]] platform::CGRect bounds() const override;
    void addSubview(platform::UIView& child) override;
    void removeSubview(platform::UIView& child) override;
    void bringSubviewToFront(platform::UIView& child) override;
    void setHidden(bool hidden) override;
    void setBackgroundColor(platform::UIColor color) override;
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) override;
    void activate(platform::NSLayoutConstraint const& constraint) override;
    void deactivate(platform::NSLayoutConstraint const& constraint) override;
    void layoutIfNeeded() override;
    void addGestureRecognizer(platform::UIGestureRecognizer& recognizer) override;

private:
    class Metrics;

    // CanvasClient
    [[nodiscard]] Size measureCanvas(GtkOrientation orientation, int forSize) override;
    void allocateCanvas(int width, int height) override;
    void drawCanvas(GtkSnapshot* snapshot) override;
    void canvasDidEnterWindow() override;
    void canvasWillLeaveWindow() override;
    void canvasWasUnmapped() override;
    void collectEdgePanTargets(std::vector<EdgePanTarget>& targets) override;

    void layOutTree();
    void setFrame(platform::CGRect frame);
    void setShownFrame(platform::CGRect frame);
    void requestLayout(platform::NSLayoutConstraint const& constraint);

    platform::UIView& m_owner;
    GObjectPointer<GtkWidget> m_canvas;
    GObjectPointer<GtkWidget> m_content;
    Sizing m_sizing = Sizing::None;
    bool m_translates = true;
    bool m_isAllocating = false;
    platform::CGRect m_frame;
    platform::CGRect m_shownFrame;
    platform::UIColor m_backgroundColor { 0, 0, 0, 0 };
    UIViewControllerPeer* m_controller = nullptr;
    Motion m_motion;
};

}
