#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <memory>

namespace zelvora::memory {

class Screen;

/// The native side of every view controller: it keeps the presentation that its owner made. As on the phone, a
/// presentation by a controller in a navigation stack is made by the stack.
///
/// A controller that is neither in a stack nor presented counts as the window's root, so it is on screen. Transitions
/// are over when the call that asks for them returns: the hooks were called, and what left is no longer kept.
class ZELVORA_API UIViewControllerPeer final : public platform::UIViewController::Peer {
public:
    UIViewControllerPeer(Screen& screen, platform::UIViewController& owner) : m_screen(screen), m_owner(owner) { }
    ~UIViewControllerPeer() override;
    UIViewControllerPeer(UIViewControllerPeer const&) = delete;
    UIViewControllerPeer& operator=(UIViewControllerPeer const&) = delete;

    /// Whom the owner, or the stack around it, presents; or nullptr.
    [[nodiscard]] std::shared_ptr<platform::UIViewController> presentedViewController() const;
    /// Who presents the owner, or the stack around it; or nullptr.
    [[nodiscard]] platform::UIViewController* presentingViewController() const;
    [[nodiscard]] platform::UIModalPresentationStyle modalPresentationStyle() const { return m_style; }
    /// Not below another one in a stack, and not covered by a full-screen presentation.
    [[nodiscard]] bool isOnScreen() const;

    /// For the parts of this adapter.
    void setNavigationController(std::weak_ptr<platform::UINavigationController> stack) { m_stack = std::move(stack); }
    [[nodiscard]] Screen& screen() const { return m_screen; }

    // platform::UIViewController::Peer
    [[nodiscard]] std::shared_ptr<platform::UIView> loadView() override;
    [[nodiscard]] std::shared_ptr<platform::UINavigationController> navigationController() const override;
    void setModalPresentationStyle(platform::UIModalPresentationStyle style) override;
    void present(std::shared_ptr<platform::UIViewController> presented, platform::Animated animated) override;
    void dismiss(platform::Animated animated) override;

private:
    [[nodiscard]] UIViewControllerPeer const& outermost() const;
    [[nodiscard]] UIViewControllerPeer& outermost();
    [[nodiscard]] bool isCovered() const;
    void endPresentation(platform::Animated animated);

    Screen& m_screen;
    platform::UIViewController& m_owner;
    std::weak_ptr<platform::UINavigationController> m_stack;
    std::shared_ptr<platform::UIViewController> m_presented;
    // Reset by the presenter's peer, when the presentation ends or that peer is destroyed.
    UIViewControllerPeer* m_presenting = nullptr;
    platform::UIModalPresentationStyle m_style = platform::UIModalPresentationStyle::Automatic;
};

/// The native side of a controller that was made while this adapter was installed.
[[nodiscard]] ZELVORA_API UIViewControllerPeer& peer(platform::UIViewController const& controller);

}
