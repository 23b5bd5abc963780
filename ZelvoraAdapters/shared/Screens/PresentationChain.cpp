#include "ZelvoraAdapters/shared/Screens/PresentationChain.h"

#include <iterator>
#include <ranges>
#include <utility>

namespace zelvora::shared {

using platform::Animated;
using platform::UIModalPresentationStyle;
using platform::UIViewController;

std::optional<PresentationChain::Level> PresentationChain::levelOf(UIViewController const& screen) const
{
    for (Level level = m_entries.size(); level > 0; --level) {
        if (m_entries[level - 1].screen.get() == &screen)
            return level;
    }
    return std::nullopt;
}

PresentationChain::Screen PresentationChain::screenAt(Level level) const
{
    return level > 0 && level <= m_entries.size() ? m_entries[level - 1].screen : nullptr;
}

bool PresentationChain::isOnScreen(Level level) const
{
    return level == 0 ? m_isContentOnScreen : m_entries[level - 1].isOnScreen;
}

// The screen is kept while hooks run, which may take it out of the chain.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void PresentationChain::present(Level presenter, Screen screen, UIModalPresentationStyle style, Animated animated)
{
    if (!mayPresent(presenter))
        return;
    auto const number = ++m_lastNumber;
    // In the chain before any hook runs: a hook that presents another at this level is refused.
    m_entries.push_back({ .screen = screen, .number = number });
    m_client.didAdd(screen, animated);
    (void)screen->view();
    if (style == UIModalPresentationStyle::FullScreen && isPresented(presenter + 1, number))
        cover(presenter, animated);
    if (isPresented(presenter + 1, number))
        m_client.show(screen, presenter, animated);
}

void PresentationChain::dismiss(Level level, Animated animated)
{
    if (level < m_entries.size())
        end(level, animated);
    else if (level > 0)
        end(level - 1, animated);
}

std::vector<PresentationChain::Screen> PresentationChain::removeAll()
{
    std::vector<Screen> screens;
    for (auto& entry : std::exchange(m_entries, {}))
        screens.push_back(std::move(entry.screen));
    m_isContentOnScreen = true;
    return screens;
}

bool PresentationChain::isPresented(Level level, std::uint64_t number) const
{
    return level <= m_entries.size() && m_entries[level - 1].number == number;
}

// A screen that is covered already has been told.
void PresentationChain::cover(Level level, Animated animated)
{
    if (!isOnScreen(level))
        return;
    setOnScreen(level, false);
    if (auto const screen = screenAt(level))
        m_client.screenWillDisappear(*screen, animated);
    else
        m_client.contentWillDisappear(animated);
}

void PresentationChain::setOnScreen(Level level, bool onScreen)
{
    (level == 0 ? m_isContentOnScreen : m_entries[level - 1].isOnScreen) = onScreen;
}

void PresentationChain::end(Level level, Animated animated)
{
    // Out of the chain before any hook runs: a hook that dismisses once more finds nothing to end.
    auto const first = m_entries.begin() + static_cast<std::ptrdiff_t>(level);
    std::vector<Entry> const ended(std::make_move_iterator(first), std::make_move_iterator(m_entries.end()));
    m_entries.erase(first, m_entries.end());
    for (auto const& entry : ended)
        m_client.didRemove(entry.screen, animated);
    for (auto const& entry : ended | std::views::reverse) {
        if (entry.isOnScreen)
            m_client.screenWillDisappear(*entry.screen, animated);
    }

    for (auto const& entry : ended) {
        if (&entry != &ended.back())
            hideUnlessPresented(entry.screen, Animated::No);
    }
    // A hook may have ended more, or presented another.
    if (m_entries.size() == level) {
        setOnScreen(level, true);
        m_client.uncover(level);
    }
    hideUnlessPresented(ended.back().screen, animated);
}

// A hook may have presented it again.
void PresentationChain::hideUnlessPresented(Screen const& screen, Animated animated)
{
    if (!levelOf(*screen))
        m_client.hide(screen, animated);
}

}
