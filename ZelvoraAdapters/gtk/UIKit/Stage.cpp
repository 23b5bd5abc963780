#include "ZelvoraAdapters/gtk/UIKit/Stage.h"

#include "ZelvoraAdapters/gtk/UIKit/EdgePan.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvora::gtk {

namespace {

// About as long as the phone's own transitions.
constexpr double slideDuration = 0.35;

}

Stage::Stage() : m_canvas(makeCanvas(*this))
{
    gtk_widget_set_overflow(widget(), GTK_OVERFLOW_HIDDEN);
}

Stage::~Stage()
{
    m_motion.stop();
    retireCanvas(widget());
}

void Stage::add(GtkWidget* page)
{
    if (auto* found = find(page)) {
        found->isLeaving = false;
        return;
    }
    if (isLeaving(page)) {
        auto* left = around(page);
        left->finishSlide();
        left->remove(page);
    }
    m_pages.push_back({ .widget = page, .offset = {} });
    gtk_widget_insert_before(page, widget(), nullptr);
    gtk_widget_set_child_visible(page, TRUE);
}

void Stage::remove(GtkWidget* page)
{
    std::erase_if(m_pages, [page](auto const& other) { return other.widget == page; });
    if (m_measuredPage == page)
        m_measuredPage = nullptr;
    if (gtk_widget_get_parent(page) == widget())
        gtk_widget_unparent(page);
}

void Stage::setLeaving(GtkWidget* page)
{
    if (auto* found = find(page))
        found->isLeaving = true;
}

bool Stage::isLeaving(GtkWidget* page)
{
    auto* stage = around(page);
    auto const* found = stage ? stage->find(page) : nullptr;
    return found && found->isLeaving;
}

void Stage::setCovered(GtkWidget* page, bool covered)
{
    if (find(page))
        gtk_widget_set_child_visible(page, !covered);
}

void Stage::place(GtkWidget* page, Offset offset)
{
    if (auto* found = find(page))
        found->offset = offset;
    gtk_widget_queue_allocate(widget());
}

void Stage::slide(GtkWidget* page, Offset to, platform::Animated animated, Completion completion)
{
    finishSlide();
    auto* found = find(page);
    if (!found || animated == platform::Animated::No || !canAnimate(widget())) {
        place(page, to);
        completion();
        return;
    }
    auto const from = found->offset;
    m_motion.start(
        widget(), slideDuration, [this, page, from, to, completion = std::move(completion)](double progress) {
            if (progress < 1) {
                place(page, { from.x + ((to.x - from.x) * progress), from.y + ((to.y - from.y) * progress) });
                return;
            }
            place(page, to);
            completion();
        });
}

CanvasClient::Size Stage::measureCanvas(GtkOrientation orientation, int forSize)
{
    Size size;
    if (m_measuredPage) {
        gtk_widget_measure(m_measuredPage, orientation, forSize, &size.minimum, &size.natural, nullptr, nullptr);
    }
    return size;
}

void Stage::allocateCanvas(int width, int height)
{
    for (auto const& page : m_pages) {
        auto const& [x, y] = page.offset;
        allocateChild(page.widget, std::round(x * width), std::round(y * height), width, height);
    }
}

void Stage::canvasDidEnterWindow()
{
    if (auto* root = gtk_widget_get_root(widget()); GTK_IS_WINDOW(root) && m_collectTargets)
        watchEdgePans(GTK_WINDOW(root));
}

void Stage::canvasWasUnmapped()
{
    finishSlide();
}

void Stage::collectEdgePanTargets(std::vector<EdgePanTarget>& targets)
{
    if (m_collectTargets)
        m_collectTargets(targets);
}

Stage* Stage::around(GtkWidget* page)
{
    auto* parent = gtk_widget_get_parent(page);
    return parent ? dynamic_cast<Stage*>(canvasClient(parent)) : nullptr;
}

Stage::Page* Stage::find(GtkWidget* page)
{
    auto const found = std::ranges::find_if(m_pages, [page](auto const& other) { return other.widget == page; });
    return found == m_pages.end() ? nullptr : &*found;
}

}
