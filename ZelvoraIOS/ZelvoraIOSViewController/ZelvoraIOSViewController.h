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

/// The full-screen container: the host's header, the site, the host's footer. A swipe from the left edge goes back, in
/// the page first and then off the screen, where the host allows it. Main thread.
class ZELVORA_API ZelvoraIOSViewController final
    : public platform::UIViewController
    , public platform::UIGestureRecognizerDelegate {
public:
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

    /// On the poster's thread.
    static void handleFooterVisibilityChange(
        std::weak_ptr<ZelvoraIOSViewController> const& weak, platform::Notification const& notification);
    void changeFooterVisibility(bool visible);
    void handleEdgePan(platform::UIGestureRecognizer const& recognizer);
    void leave();

    std::shared_ptr<ZelvoraWebView> m_zelvoraWebView;
    std::shared_ptr<platform::UIView> m_footerView;
    std::optional<platform::NSLayoutConstraint> m_webViewBottomConstraint;
    std::string m_urlString;
    /// Lives as long as the controller, and stands for it at the notification centre.
    std::shared_ptr<int> m_observation = std::make_shared<int>();
};

}
