#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Canvas.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"
#include "ZelvoraPlatform/UIKit/Animated.h"

#include <functional>
#include <vector>

namespace zelvora::gtk {

/// A canvas of pages on top of one another, each as large as the stage, that slide in and out one at a time. Main
/// thread.
class Stage final : public CanvasClient {
public:
    /// A page's distance from its place, in widths to the right and heights downwards.
    struct Offset {
        double x = 0;
        double y = 0;
    };
    using Completion = std::function<void()>;
    using CollectTargets = std::function<void(std::vector<EdgePanTarget>&)>;

    Stage();
    Stage(Stage const&) = delete;
    Stage& operator=(Stage const&) = delete;
    ~Stage() override;

    [[nodiscard]] GtkWidget* widget() const { return m_canvas.get(); }

    /// The page whose size the stage requests; other pages take the space that there is.
    void setMeasuredPage(GtkWidget* page) { m_measuredPage = page; }
    /// Adds the targets of drags that start at the stage's left edge.
    void setCollectTargets(CollectTargets collect) { m_collectTargets = std::move(collect); }

    /// Puts a page on top; a page that is on the stage already stays in its place. A page that is leaving another stage
    /// is off that at once. The page must have no other parent.
    void add(GtkWidget* page);
    void remove(GtkWidget* page);
    [[nodiscard]] bool has(GtkWidget* page) { return find(page) != nullptr; }
    /// From now until it is removed, or added again, the page is only still seen to leave.
    void setLeaving(GtkWidget* page);
    /// Whether the page is leaving the stage that it is on.
    [[nodiscard]] static bool isLeaving(GtkWidget* page);
    /// A covered page neither draws nor receives events.
    void setCovered(GtkWidget* page, bool covered);
    void place(GtkWidget* page, Offset offset);

    /// Moves a page from its current offset. Calls the completion once, before this returns if nothing can be animated.
    /// A running slide is finished first.
    void slide(GtkWidget* page, Offset to, platform::Animated animated, Completion completion);
    void finishSlide() { m_motion.finish(); }

private:
    struct Page {
        GtkWidget* widget = nullptr;
        Offset offset;
        bool isLeaving = false;
    };

    // CanvasClient
    [[nodiscard]] Size measureCanvas(GtkOrientation orientation, int forSize) override;
    void allocateCanvas(int width, int height) override;
    void canvasDidEnterWindow() override;
    void canvasWasUnmapped() override;
    void collectEdgePanTargets(std::vector<EdgePanTarget>& targets) override;

    [[nodiscard]] static Stage* around(GtkWidget* page);
    [[nodiscard]] Page* find(GtkWidget* page);

    GObjectPointer<GtkWidget> m_canvas;
    GtkWidget* m_measuredPage = nullptr;
    std::vector<Page> m_pages;
    CollectTargets m_collectTargets;
    Motion m_motion;
};

}
