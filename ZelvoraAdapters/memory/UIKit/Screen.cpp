#include "ZelvoraAdapters/memory/UIKit/Screen.h"

#include "ZelvoraAdapters/memory/UIKit/LayoutSolver.h"
#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"

namespace zelvora::memory {

void Screen::setSize(double width, double height)
{
    m_bounds = { 0, 0, width, height };
}

void Screen::layout()
{
    for (auto const* peer : m_peers) {
        if (!peer->owner().superview())
            layoutTreeAround(peer->owner());
    }
}

std::vector<std::string> Screen::ambiguities() const
{
    std::vector<std::string> all;
    for (auto const* peer : m_peers)
        all.insert(all.end(), peer->ambiguities().begin(), peer->ambiguities().end());
    return all;
}

void Screen::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    m_running.push_back(m_animations.size());
    m_animations.push_back({ duration, false, {} });
    animations();
    m_running.pop_back();
}

void Screen::layoutTreeAround(platform::UIView& view)
{
    auto* root = &view;
    while (root->superview())
        root = root->superview();
    auto* const animation = m_running.empty() ? nullptr : &m_animations[m_running.back()];
    if (animation)
        animation->laidOut = true;

    bool const fillsScreen = peer(*root).fillsScreen();
    auto layout = fillsScreen ? solveLayout(*root, m_bounds, m_insets) : solveLayout(*root, peer(*root).ownFrame(), {});
    for (auto const& [placed, frame] : layout.frames) {
        auto& placedPeer = peer(*placed);
        // What the view told as the root of a tree of its own is past.
        placedPeer.setAmbiguities({});
        if (animation && placedPeer.frame() != frame)
            animation->moves.push_back({ placed, placedPeer.frame(), frame });
        placedPeer.place(frame);
    }
    peer(*root).setAmbiguities(std::move(layout.ambiguities));
}

}
