#include "ZelvoraAdapters/memory/UIKit/Screen.h"

#include "ZelvoraAdapters/memory/UIKit/UIViewPeer.h"

#include <utility>

namespace zelvora::memory {

void Screen::setSize(double width, double height)
{
    m_bounds = { 0, 0, width, height };
}

void Screen::layout()
{
    for (auto* peer : m_peers) {
        if (!peer->owner().superview())
            peer->layOutTree();
    }
}

std::vector<std::string> Screen::ambiguities() const
{
    std::vector<std::string> all;
    for (auto const* peer : m_peers)
        all.insert(all.end(), peer->ambiguities().begin(), peer->ambiguities().end());
    return all;
}

std::vector<std::string> Screen::complaints() const
{
    std::scoped_lock const lock(m_mutex);
    return m_complaints;
}

void Screen::complain(std::string complaint)
{
    std::scoped_lock const lock(m_mutex);
    m_complaints.push_back(std::move(complaint));
}

void Screen::animate(platform::TimeInterval duration, std::function<void()> const& animations)
{
    m_running.push_back(m_animations.size());
    m_animations.push_back({ duration, false, {} });
    animations();
    m_running.pop_back();
}

void Screen::didLayOut()
{
    if (!m_running.empty())
        m_animations[m_running.back()].laidOut = true;
}

void Screen::didPlace(platform::UIView const& view, platform::CGRect from, platform::CGRect to)
{
    if (!m_running.empty() && from != to)
        m_animations[m_running.back()].moves.push_back({ &view, from, to });
}

}
