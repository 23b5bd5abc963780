#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/UIKit/Animated.h"
#include "ZelvoraPlatform/UIKit/UIView.h"

#include <cstdint>
#include <memory>

namespace zelvora::platform {

class UINavigationController;

/// With the phone's raw values.
enum class UIModalPresentationStyle : std::int8_t { Automatic = -2, FullScreen = 0 };

/// A screen: a root view, and what happens when it comes and goes. Main thread. Whoever shows it (a navigation stack, a
/// presenter's window) keeps it. The root view is made on first use, so that no hook runs before the object is
/// complete.
class ZELVORA_API UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    /// The native controller. The owner outlives it.
    class Peer {
    public:
        virtual ~Peer() = default;

        /// Makes the root view; called once.
        [[nodiscard]] virtual std::shared_ptr<UIView> loadView() = 0;
        /// The navigation stack that the owner is in, or nullptr.
        [[nodiscard]] virtual std::shared_ptr<UINavigationController> navigationController() const = 0;
        virtual void setModalPresentationStyle(UIModalPresentationStyle style) = 0;
        /// Shows the controller over the owner's window and keeps it until it is dismissed. An owner that presents
        /// another already does nothing but log, as on the phone.
        virtual void present(std::shared_ptr<UIViewController> presented, Animated animated) = 0;
        /// Ends the presentation that the owner made, else the one in which it (or the navigation stack around it)
        /// stands; otherwise nothing happens.
        virtual void dismiss(Animated animated) = 0;
    };

    UIViewController();
    virtual ~UIViewController();
    UIViewController(UIViewController const&) = delete;
    UIViewController& operator=(UIViewController const&) = delete;

    /// The root view. On first use it is made and `viewDidLoad` called.
    [[nodiscard]] UIView& view();
    [[nodiscard]] bool isViewLoaded() const { return static_cast<bool>(m_view); }

    [[nodiscard]] std::shared_ptr<UINavigationController> navigationController() const;
    void setModalPresentationStyle(UIModalPresentationStyle style);
    void present(std::shared_ptr<UIViewController> presented, Animated animated);
    void dismiss(Animated animated);

    /// Hooks, called by the native side. An override calls its base first.
    virtual void viewDidLoad() { }
    virtual void viewWillDisappear(Animated) { }

    [[nodiscard]] Peer& peer() const { return *m_peer; }

protected:
    /// For controllers of the adapters: the host's own screen, a navigation stack.
    explicit UIViewController(std::unique_ptr<Peer> peer);

private:
    // Before the view: the peer may show it until the end.
    std::unique_ptr<Peer> m_peer;
    std::shared_ptr<UIView> m_view;
};

}
