#pragma once

#include "ZelvoraAdapters/shared/Screens/PresentationChain.h"
#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <memory>

namespace zelvora::memory {

class Screen;

/// The native side of a view controller. As on the phone, a controller in a navigation stack presents, and is
/// dismissed, through its stack.
///
/// A controller that is neither in a stack nor presented counts as a window's root, so it is on screen and keeps what
/// is presented over it. A transition is over when the call that asks for it returns: the hooks were called, and what
/// left is no longer kept.
class ZELVORA_API UIViewControllerPeer final
    : public platform::UIViewController::Peer
    , private shared::PresentationChain::Client {
public:
    /// Made by the platform with each controller. The screen must outlive it.
    UIViewControllerPeer(Screen& screen, platform::UIViewController& owner);
    UIViewControllerPeer(UIViewControllerPeer const&) = delete;
    UIViewControllerPeer& operator=(UIViewControllerPeer const&) = delete;
    ~UIViewControllerPeer() override;

    /// The peer of a controller that was made while this adapter was installed; another controller stops the process.
    [[nodiscard]] static UIViewControllerPeer& of(platform::UIViewController const& controller);

    /// The controller that the owner, or the stack around it, presents; or nullptr.
    [[nodiscard]] std::shared_ptr<platform::UIViewController> presentedViewController() const;
    /// The controller that presents the owner, or the stack around it; nullptr if none does, or once the dismissal has
    /// begun.
    [[nodiscard]] platform::UIViewController* presentingViewController() const;
    /// Whether the owner is neither below another one in a stack nor covered by a full-screen presentation.
    [[nodiscard]] bool isOnScreen() const;
    /// As it was set last; automatic at first.
    [[nodiscard]] platform::UIModalPresentationStyle modalPresentationStyle() const { return m_style; }

    /// For the adapter itself.
    /// @{
    /// Whether the controller is presented or presents another.
    [[nodiscard]] static bool isShown(platform::UIViewController const& controller);
    void setNavigationController(std::weak_ptr<platform::UINavigationController> navigation)
    {
        m_navigation = std::move(navigation);
    }
    [[nodiscard]] Screen& screen() const { return m_screen; }
    /// @}

    // platform::UIViewController::Peer
    [[nodiscard]] std::shared_ptr<platform::UIView> loadView() override;
    [[nodiscard]] std::shared_ptr<platform::UINavigationController> navigationController() const override;
    void setModalPresentationStyle(platform::UIModalPresentationStyle style) override { m_style = style; }
    void present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated) override;
    void dismiss(platform::Animated animated) override;

private:
    struct Place {
        UIViewControllerPeer& base;
        shared::PresentationChain::Level level;
    };

    // shared::PresentationChain::Client, of what is presented over the owner
    void didAdd(shared::PresentationChain::Screen const& screen, platform::Animated animated) override;
    void didRemove(shared::PresentationChain::Screen const& screen, platform::Animated animated) override;
    void contentWillDisappear(platform::Animated animated) override;
    void screenWillDisappear(platform::UIViewController& screen, platform::Animated animated) override;
    void show(shared::PresentationChain::Screen const&, shared::PresentationChain::Level, platform::Animated) override
    {
    }
    void uncover(shared::PresentationChain::Level) override { }
    void hide(shared::PresentationChain::Screen const& screen, platform::Animated animated) override;

    [[nodiscard]] UIViewControllerPeer& outermost() const;
    /// The owner's place in a chain of presentations; at the base of its own chain unless it is presented.
    [[nodiscard]] Place place() const;

    Screen& m_screen;
    platform::UIViewController& m_owner;
    std::weak_ptr<platform::UINavigationController> m_navigation;
    // The peer whose chain the owner is in. Reset by that peer when the presentation ends or the peer is destroyed.
    UIViewControllerPeer* m_base = nullptr;
    shared::PresentationChain m_presentations { *this };
    platform::UIModalPresentationStyle m_style = platform::UIModalPresentationStyle::Automatic;
};

/// Short for `UIViewControllerPeer::of`.
[[nodiscard]] ZELVORA_API UIViewControllerPeer& peer(platform::UIViewController const& controller);

}
