#include "tests/simulation/ScreenModel.h"

#include <algorithm>
#include <utility>

namespace zelvora::simulation {

ScreenId ScreenModel::push(ScreenId screen)
{
    auto const covered = m_stack.back();
    m_stack.push_back(screen);
    return covered;
}

bool ScreenModel::mayPresent(ScreenId presenter) const
{
    auto const [root, level] = placeOf(presenter);
    auto const chain = m_chains.find(root);
    return level == (chain == m_chains.end() ? 0 : chain->second.size());
}

ScreenId ScreenModel::present(ScreenId presenter, ScreenId screen)
{
    m_chains[placeOf(presenter).root].push_back(screen);
    return presenter;
}

ScreenId ScreenModel::pop()
{
    if (m_stack.size() <= 1)
        return noScreen;
    auto const popped = m_stack.back();
    m_stack.pop_back();
    return popped;
}

std::vector<ScreenId> ScreenModel::dismiss(ScreenId screen)
{
    // A screen on the stack is dismissed through it, and nothing is presented over the stack.
    if (isOnStack(screen))
        return {};
    auto const [root, level] = placeOf(screen);
    auto const found = m_chains.find(root);
    if (found == m_chains.end())
        return {};
    auto& chain = found->second;
    if (level == chain.size() && level == 0)
        return {};
    auto const first = level < chain.size() ? level : level - 1;
    std::vector<ScreenId> const ended(chain.begin() + static_cast<std::ptrdiff_t>(first), chain.end());
    chain.resize(first);
    if (chain.empty())
        m_chains.erase(found);
    return ended;
}

bool ScreenModel::isOnStack(ScreenId screen) const
{
    return std::ranges::find(m_stack, screen) != m_stack.end();
}

bool ScreenModel::isVisible(ScreenId screen) const
{
    if (isOnStack(screen))
        return m_stack.back() == screen;
    return topOver(placeOf(screen).root) == screen;
}

ScreenId ScreenModel::topOver(ScreenId root) const
{
    auto const chain = m_chains.find(root);
    return chain == m_chains.end() ? root : chain->second.back();
}

Container const* ScreenModel::container(ScreenId id) const
{
    auto const found = m_containers.find(id);
    return found == m_containers.end() ? nullptr : &found->second;
}

void ScreenModel::sweep(std::set<ScreenId> const& held)
{
    // A container keeps what it presents, which may itself be a root.
    std::set<ScreenId> alive(held);
    alive.insert(m_stack.begin(), m_stack.end());
    for (bool grew = true; std::exchange(grew, false);) {
        for (auto const& [root, chain] : m_chains) {
            if (isContainer(root) && !alive.contains(root))
                continue;
            for (auto const screen : chain)
                grew = alive.insert(screen).second || grew;
        }
    }
    std::erase_if(
        m_chains, [&](auto const& entry) { return isContainer(entry.first) && !alive.contains(entry.first); });
    std::erase_if(m_containers, [&](auto const& entry) { return !alive.contains(entry.first); });
}

ScreenModel::Place ScreenModel::placeOf(ScreenId screen) const
{
    for (auto const& [root, chain] : m_chains) {
        auto const found = std::ranges::find(chain, screen);
        if (found != chain.end())
            return { root, static_cast<std::size_t>(found - chain.begin()) + 1 };
    }
    return { screen, 0 };
}

}
