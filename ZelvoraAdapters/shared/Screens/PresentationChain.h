#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace zelvora::shared {

/// The screens over one window's content, each presented by the one below it. The chain decides who may present, what a
/// dismissal ends, and which screens are told, once each and in which order, that they disappear. Its client shows the
/// result. The chain owns the screens. Main thread.
///
/// Hooks of the host run within `present` and `dismiss`. They may change the chain again, and they may end the window,
/// so the caller keeps the chain and its client alive during the call.
class ZELVORA_API PresentationChain final {
public:
    /// A place in the chain: 0 is the window's content, n the nth screen over it.
    using Level = std::size_t;
    using Screen = std::shared_ptr<platform::UIViewController>;

    /// What the adapter does about the chain.
    class ZELVORA_API Client {
    public:
        virtual ~Client() = default;

        /// A screen is on top of the chain now. Its view is loaded next.
        virtual void didAdd(Screen const& screen, platform::Animated animated) = 0;
        /// A screen has left the chain. It is still shown, and it has not been told yet.
        virtual void didRemove(Screen const& screen, platform::Animated animated) = 0;

        /// Call the hooks.
        virtual void contentWillDisappear(platform::Animated animated) = 0;
        virtual void screenWillDisappear(platform::UIViewController& screen, platform::Animated animated) = 0;

        /// Brings a screen on top of everything that is shown.
        virtual void show(Screen const& screen, Level presenter, platform::Animated animated) = 0;
        /// The content or screen at the level is on the screen again.
        virtual void uncover(Level level) = 0;
        /// Removes a dismissed screen: those below the top one first and at once, then the top one, animated.
        virtual void hide(Screen const& screen, platform::Animated animated) = 0;
    };

    /// The client outlives the chain.
    explicit PresentationChain(Client& client) : m_client(client) { }

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }
    /// Absent for a screen that is not in the chain.
    [[nodiscard]] std::optional<Level> levelOf(platform::UIViewController const& screen) const;
    /// nullptr for the content and above the top.
    [[nodiscard]] Screen screenAt(Level level) const;
    /// Whether no full-screen presentation covers the content or screen at the level.
    [[nodiscard]] bool isOnScreen(Level level) const;

    /// Whether the content or screen at the level presents nothing yet.
    [[nodiscard]] bool mayPresent(Level presenter) const { return presenter == m_entries.size(); }
    /// Loads the screen's view, tells the presenter that it disappears if the style is full screen, and shows the
    /// screen, unless a hook has ended the presentation by then. Does nothing unless `mayPresent`.
    void present(Level presenter, Screen screen, platform::UIModalPresentationStyle style, platform::Animated animated);
    /// Ends the presentation by the level, else the presentation of the level, with all screens above it. They leave
    /// the chain first; then those on the screen are told, from the top down. What a hook presents again stays.
    void dismiss(Level level, platform::Animated animated);
    /// For a window that is destroyed or given other content: empties the chain without telling the screens, and
    /// returns them from the bottom up.
    [[nodiscard]] std::vector<Screen> removeAll();

private:
    struct Entry {
        Screen screen;
        bool isOnScreen = true;
        /// Tells two presentations of one screen apart.
        std::uint64_t number = 0;
    };

    [[nodiscard]] bool isPresented(Level level, std::uint64_t number) const;
    void cover(Level level, platform::Animated animated);
    void setOnScreen(Level level, bool onScreen);
    void end(Level level, platform::Animated animated);
    void hideUnlessPresented(Screen const& screen, platform::Animated animated);

    Client& m_client;
    std::vector<Entry> m_entries;
    bool m_isContentOnScreen = true;
    std::uint64_t m_lastNumber = 0;
};

}
