#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/Bundle.h"
#include "ZelvoraPlatform/Foundation/NSCoder.h"
#include "ZelvoraPlatform/Foundation/NotificationCenter.h"
#include "ZelvoraPlatform/UIKit/NSLayoutConstraint.h"
#include "ZelvoraPlatform/UIKit/UIGestureRecognizer.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"

#include <memory>
#include <optional>
#include <string>

namespace zelvora {

class ZelvoraWebView;

/// The full-screen container: the host's header, the site and the host's footer, from top to bottom.
/// `ZelvoraSDK::start` creates one; a host may also present one itself. Header and footer come from the facade's view
/// providers when the view loads. If the facade allows swiping back, a swipe from the left edge goes back in the page's
/// history, or leaves the screen if there is none. Queued events are uploaded whenever the container disappears. Main
/// thread.
class ZELVORA_API ZelvoraIOSViewController final
    : public platform::UIViewController
    , public platform::UIGestureRecognizerDelegate {
public:
    /// The screen stays blank if `urlString` is not a URL.
    explicit ZelvoraIOSViewController(std::string urlString);
    /// Not supported: stops the process.
    ZelvoraIOSViewController(std::optional<std::string> const& nibName, platform::Bundle const* bundle);
    /// Not supported: stops the process.
    explicit ZelvoraIOSViewController(platform::NSCoder const& coder);
    ~ZelvoraIOSViewController() override;

    // platform::UIViewController
    void viewDidLoad() override;
    void viewWillDisappear(platform::Animated animated) override;

    // platform::UIGestureRecognizerDelegate
    bool gestureRecognizerShouldBegin(platform::UIGestureRecognizer& recognizer) override;
    bool gestureRecognizerShouldRecognizeSimultaneouslyWith(
        platform::UIGestureRecognizer& recognizer, platform::UIGestureRecognizer& other) override;

private:
    void observeFooterVisibility();
    void installBackSwipe();
    void setupLayout();
    std::shared_ptr<platform::UIView> addHeader();
    void addFooter();
    void addWebView(platform::UIView* header);
    [[nodiscard]] platform::NSLayoutConstraint makeWebViewBottomConstraint(bool footerIsVisible);

    // Called on the thread that posts the notification.
    static void handleFooterVisibilityChange(
        std::weak_ptr<ZelvoraIOSViewController> const& weak, platform::Notification const& notification);
    void changeFooterVisibility(bool visible);
    void handleEdgePan(platform::UIGestureRecognizer const& recognizer);
    void leave();

    std::shared_ptr<ZelvoraWebView> m_zelvoraWebView;
    std::shared_ptr<platform::UIView> m_footerView;
    std::optional<platform::NSLayoutConstraint> m_webViewBottomConstraint;
    std::string m_urlString;
    // Registered with the notification centre in the controller's place; lives as long as the controller.
    std::shared_ptr<int> m_observation = std::make_shared<int>();
};

}
