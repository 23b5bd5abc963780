#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace zelvora::simulation {

/// A screen: a container is named by the number of its page, the host's own screens by negative numbers.
using ScreenId = int;
inline constexpr ScreenId noScreen = -1000;
/// A screen that shows the shop by presenting it.
inline constexpr ScreenId plainScreen = -1;
/// The root of the navigation stack.
inline constexpr ScreenId homeScreen = -2;
/// The navigation stack itself.
inline constexpr ScreenId navigationStack = -3;
/// The nth screen that the host pushes is this minus n.
inline constexpr ScreenId firstPushedScreen = -10;
[[nodiscard]] constexpr bool isContainer(ScreenId id)
{
    return id >= 0;
}

/// What a host's view provider returns.
enum class Provider : std::uint8_t { None, View, Nothing };

struct Container {
    bool swipesBack = false;
    bool hasHeader = false;
    bool hasFooter = false;
    bool showsFooter = false;
};

/// What is on the screen: one navigation stack, and chains of full-screen presentations over other screens.
class ScreenModel final {
public:
    /// The screen that the new one covers, or `noScreen` if nothing comes on the screen.
    ScreenId push(ScreenId screen);
    ScreenId present(ScreenId presenter, ScreenId screen);
    [[nodiscard]] bool mayPresent(ScreenId presenter) const;
    /// The popped screen, or `noScreen`.
    ScreenId pop();
    /// The screens that leave, from the bottom up. Only the last was visible.
    std::vector<ScreenId> dismiss(ScreenId screen);

    [[nodiscard]] std::vector<ScreenId> const& stack() const { return m_stack; }
    [[nodiscard]] bool isOnStack(ScreenId screen) const;
    [[nodiscard]] bool isVisible(ScreenId screen) const;
    /// The top of the chain over a screen, or the screen itself.
    [[nodiscard]] ScreenId topOver(ScreenId root) const;

    void addContainer(ScreenId id, Container container) { m_containers.insert_or_assign(id, container); }
    [[nodiscard]] Container const* container(ScreenId id) const;
    void setShowsFooter(ScreenId id, bool shows) { m_containers.at(id).showsFooter = shows; }
    /// Those that exist, oldest first.
    [[nodiscard]] std::map<ScreenId, Container> const& containers() const { return m_containers; }
    /// Forgets the containers that nothing holds any more.
    void sweep(std::set<ScreenId> const& held);

private:
    struct Place {
        ScreenId root = noScreen;
        std::size_t level = 0;
    };
    [[nodiscard]] Place placeOf(ScreenId screen) const;

    std::vector<ScreenId> m_stack { homeScreen };
    // From a root to what is presented over it, bottom up.
    std::map<ScreenId, std::vector<ScreenId>> m_chains;
    std::map<ScreenId, Container> m_containers;
};

}
