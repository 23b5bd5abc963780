#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/Animated.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace zelvora::platform {

class UINavigationController;

/// With the phone's raw values.
enum class UIModalPresentationStyle : std::int8_t { Automatic = -2, FullScreen = 0 };

/// A screen: a root view, and hooks for what happens to it. Main thread. Whatever shows a controller (a navigation
/// stack, a presenter's window) owns it while it is shown. The root view is made on first use, so that no hook runs
/// before the object is complete: do not call `view` in a constructor.
class ZELVORA_API UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    /// The native controller. A peer is made before its owner is complete and destroyed after the owner's view: its
    /// constructor and destructor must not use the owner.
    class Peer {
    public:
        virtual ~Peer() = default;

        /// Makes the root view. Called once, and never returns null.
        [[nodiscard]] virtual std::shared_ptr<UIView> loadView() = 0;
        /// The navigation stack that the owner is on, or nullptr.
        [[nodiscard]] virtual std::shared_ptr<UINavigationController> navigationController() const = 0;
        /// How the owner is shown when it is presented next.
        virtual void setModalPresentationStyle(UIModalPresentationStyle style) = 0;
        /// Shows the controller over the owner's window and owns it until it is dismissed. The navigation stack
        /// presents for an owner that is on one. If the presenter presents another already or is in no window, the
        /// adapter logs that and does nothing. The controller must not be null or on screen; otherwise this stops the
        /// process. A popped screen is on its stack until its `viewWillDisappear` has returned.
        virtual void present(std::shared_ptr<UIViewController> presented, Animated animated) = 0;
        /// Ends the presentation that the owner made, together with those above it. If it made none, ends the one that
        /// shows the owner or the navigation stack that it is on. Otherwise does nothing.
        virtual void dismiss(Animated animated) = 0;
    };

    /// Needs an installed platform. A class whose native controller has to be of a class of its own passes that one's
    /// name: see `Platform::makeViewPeer`.
    explicit UIViewController(std::optional<std::string_view> nativeClass = std::nullopt);
    virtual ~UIViewController();
    UIViewController(UIViewController const&) = delete;
    UIViewController& operator=(UIViewController const&) = delete;

    /// The root view. The first call makes it and then calls `viewDidLoad`.
    [[nodiscard]] UIView& view();
    /// Whether the root view has been made. Asking does not make it.
    [[nodiscard]] bool isViewLoaded() const { return static_cast<bool>(m_view); }

    /// Asks the peer, where the method of the same name says more.
    /// @{
    [[nodiscard]] std::shared_ptr<UINavigationController> navigationController() const;
    void setModalPresentationStyle(UIModalPresentationStyle style);
    void present(std::shared_ptr<UIViewController> presented, Animated animated);
    void dismiss(Animated animated);
    /// @}

    /// A hook: called once, by `view`, when it has made the root view. An override calls its base first.
    virtual void viewDidLoad() { }
    /// A hook: called by the native side once each time that the screen, while it is shown, is popped, dismissed, or
    /// covered by a push or a full-screen presentation; on Linux also when its window closes. An override calls its
    /// base first.
    virtual void viewWillDisappear(Animated) { }

    /// For adapters.
    [[nodiscard]] Peer& peer() const { return *m_peer; }

protected:
    /// For adapters' controllers: the host's own screen, a navigation stack.
    explicit UIViewController(std::unique_ptr<Peer> peer);

private:
    // Declared first, so destroyed last: the view may refer to it until its own end.
    std::unique_ptr<Peer> m_peer;
    std::shared_ptr<UIView> m_view;
};

}
