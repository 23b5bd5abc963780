#pragma once

#include "ZelvoraAdapters/gtk/UIKit/Canvas.h"
#include "ZelvoraAdapters/gtk/UIKit/ViewAnimation.h"
#include "ZelvoraPlatform/UIKit/Animated.h"

#include <functional>
#include <vector>

namespace zelvora::gtk {

/// A canvas of pages on top of one another, each as large as the stage, that slide in and out one at a time. Main
/// thread.
class Stage final : private CanvasClient {
public:
    /// How far a page stands from its place, in widths to the right and heights downwards.
    struct Offset {
        double x = 0;
        double y = 0;
    };
    using Completion = std::function<void()>;
    using CollectTargets = std::function<void(std::vector<EdgeDragTarget>&)>;

    Stage();
    Stage(Stage const&) = delete;
    Stage& operator=(Stage const&) = delete;
    ~Stage() override;

    [[nodiscard]] GtkWidget* widget() const { return m_canvas; }

    /// The page whose size the stage asks for; other pages take what there is.
    void setMeasuredPage(GtkWidget* page) { m_measuredPage = page; }
    /// Asked who wants to hear of drags that start at the stage's left edge.
    void setCollectTargets(CollectTargets collect) { m_collectTargets = std::move(collect); }

    /// Puts a page on top, or in its old place where it is there already. The stage takes it out of nothing.
    void add(GtkWidget* page);
    void remove(GtkWidget* page);
    /// A page that is covered neither draws nor takes part in events.
    void setCovered(GtkWidget* page, bool covered);
    void place(GtkWidget* page, Offset offset);

    /// Moves a page from where it stands; the completion is called once, before this returns where nothing can be
    /// shown. A slide that runs is finished first.
    void slide(GtkWidget* page, Offset to, platform::Animated animated, Completion completion);
    void finishSlide() { m_motion.finish(); }

private:
    struct Page {
        GtkWidget* widget = nullptr;
        Offset offset;
    };

    // CanvasClient
    [[nodiscard]] Size measureCanvas(GtkOrientation orientation, int forSize) override;
    void allocateCanvas(int width, int height) override;
    void canvasDidEnterWindow() override;
    void canvasWasUnmapped() override;
    void collectEdgeDragTargets(std::vector<EdgeDragTarget>& targets) override;

    [[nodiscard]] Page* find(GtkWidget* page);

    GtkWidget* m_canvas;
    GtkWidget* m_measuredPage = nullptr;
    std::vector<Page> m_pages;
    CollectTargets m_collectTargets;
    Motion m_motion;
};

}
