#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"

#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UINavigationController.h"
#include "ZelvoraPlatform/UIKit/UIScreenEdgePanGestureRecognizer.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora {

using platform::Animated;
using platform::NSLayoutConstraint;
using platform::Platform;
using platform::UIGestureRecognizer;

namespace {

std::shared_ptr<platform::UIView> askForView(
    ZelvoraSDK::ViewProvider const& provider, platform::UIViewController& container)
{
    auto view = provider ? provider(container) : nullptr;
    if (view && view->superview() == &container.view())
        Platform::current().complain(
            "The header was returned as the footer too, and is the footer now. Return two views.");
    else if (view && view->superview())
        Platform::current().complain(
            "A header or footer is in another view, which loses it. Return a new view for each container.");
    return view;
}

}

ZelvoraIOSViewController::ZelvoraIOSViewController(std::string urlString)
    : UIViewController("ZelvoraIOSViewController")
    , m_urlString(std::move(urlString))
{
}

ZelvoraIOSViewController::ZelvoraIOSViewController(std::optional<std::string> const&, platform::Bundle const*)
{
    platform::fatalError(
        "Use of unimplemented initializer 'init(nibName:bundle:)' for class 'ZelvoraIOS.ZelvoraIOSViewController'");
}

ZelvoraIOSViewController::ZelvoraIOSViewController(platform::NSCoder const&)
{
    platform::fatalError("init(coder:) has not been implemented");
}

ZelvoraIOSViewController::~ZelvoraIOSViewController()
{
    Platform::current().notificationCenter().removeObserver(this);
}

void ZelvoraIOSViewController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    view().setBackgroundColor(platform::UIColor::white());
    observeFooterVisibility();
    if (ZelvoraSDK::shared().allowsSwipeBack())
        installBackSwipe();
    setupLayout();
}

void ZelvoraIOSViewController::observeFooterVisibility()
{
    auto const self = std::static_pointer_cast<ZelvoraIOSViewController>(shared_from_this());
    // The centre keeps the observer alive while the handler runs, on the thread that posts. If the observer were the
    // controller, that thread could release the last reference and destroy a screen off the main thread.
    std::shared_ptr<void const> const observer(m_observation, this);
    Platform::current().notificationCenter().addObserver(observer, "ZelvoraFooterVisibilityChanged",
        [weak = std::weak_ptr(self)](
            platform::Notification const& notification) { handleFooterVisibilityChange(weak, notification); });
}

void ZelvoraIOSViewController::installBackSwipe()
{
    auto const self = std::static_pointer_cast<ZelvoraIOSViewController>(shared_from_this());
    if (auto const navigation = navigationController()) {
        if (auto const pop = navigation->interactivePopGestureRecognizer()) {
            pop->setDelegate(self);
            pop->setEnabled(true);
        }
    }
    auto const act = [weak = std::weak_ptr(self)](UIGestureRecognizer const& recognizer) {
        if (auto const controller = weak.lock())
            controller->handleEdgePan(recognizer);
    };
    auto edgePan = std::make_shared<platform::UIScreenEdgePanGestureRecognizer>(platform::UIRectEdge::Left, act);
    edgePan->setDelegate(self);
    view().addGestureRecognizer(std::move(edgePan));
}

void ZelvoraIOSViewController::setupLayout()
{
    auto const header = addHeader();
    addFooter();
    addWebView(header.get());
    if (m_footerView)
        view().bringSubviewToFront(*m_footerView);
}

std::shared_ptr<platform::UIView> ZelvoraIOSViewController::addHeader()
{
    auto header = askForView(ZelvoraSDK::shared().headerViewProvider(), *this);
    if (!header)
        return nullptr;
    header->setTranslatesAutoresizingMaskIntoConstraints(false);
    view().addSubview(header);
    NSLayoutConstraint::activate({
        header->topAnchor().constraintEqualTo(view().safeAreaLayoutGuide().topAnchor()),
        header->leadingAnchor().constraintEqualTo(view().leadingAnchor()),
        header->trailingAnchor().constraintEqualTo(view().trailingAnchor()),
    });
    return header;
}

void ZelvoraIOSViewController::addFooter()
{
    m_footerView = askForView(ZelvoraSDK::shared().footerViewProvider(), *this);
    if (!m_footerView)
        return;
    m_footerView->setTranslatesAutoresizingMaskIntoConstraints(false);
    view().addSubview(m_footerView);
    // The footer extends over the home indicator's area, so that the page does not show below it.
    NSLayoutConstraint::activate({
        m_footerView->bottomAnchor().constraintEqualTo(view().bottomAnchor()),
        m_footerView->leadingAnchor().constraintEqualTo(view().leadingAnchor()),
        m_footerView->trailingAnchor().constraintEqualTo(view().trailingAnchor()),
    });
    m_footerView->setHidden(!ZelvoraSDK::shared().isFooterVisible());
}

void ZelvoraIOSViewController::addWebView(platform::UIView* header)
{
    auto& sdk = ZelvoraSDK::shared();
    m_zelvoraWebView = std::make_shared<ZelvoraWebView>(platform::CGRect {}, m_urlString, sdk.allowsSwipeBack());
    m_zelvoraWebView->setParentViewController(shared_from_this());
    m_zelvoraWebView->setTranslatesAutoresizingMaskIntoConstraints(false);
    sdk.setActiveWebView(m_zelvoraWebView);
    view().addSubview(m_zelvoraWebView);

    auto const top = header ? header->bottomAnchor() : view().safeAreaLayoutGuide().topAnchor();
    m_webViewBottomConstraint = makeWebViewBottomConstraint(sdk.isFooterVisible());
    NSLayoutConstraint::activate({
        m_zelvoraWebView->topAnchor().constraintEqualTo(top),
        m_zelvoraWebView->leadingAnchor().constraintEqualTo(view().leadingAnchor()),
        m_zelvoraWebView->trailingAnchor().constraintEqualTo(view().trailingAnchor()),
        *m_webViewBottomConstraint,
    });
}

NSLayoutConstraint ZelvoraIOSViewController::makeWebViewBottomConstraint(bool footerIsVisible)
{
    auto const bottom = footerIsVisible && m_footerView ? m_footerView->topAnchor() : view().bottomAnchor();
    return m_zelvoraWebView->bottomAnchor().constraintEqualTo(bottom);
}

void ZelvoraIOSViewController::handleFooterVisibilityChange(
    std::weak_ptr<ZelvoraIOSViewController> const& weak, platform::Notification const& notification)
{
    auto const* entry = notification.userInfo ? notification.userInfo->find("visible") : nullptr;
    auto const visible = entry ? entry->boolean() : std::nullopt;
    if (!visible)
        return;
    if (auto self = weak.lock()) {
        Platform::current().mainQueue().async(
            [self = std::move(self), visible = *visible] { self->changeFooterVisibility(visible); });
    }
}

void ZelvoraIOSViewController::changeFooterVisibility(bool visible)
{
    if (m_footerView)
        m_footerView->setHidden(!visible);
    if (m_webViewBottomConstraint)
        m_webViewBottomConstraint->setActive(false);
    m_webViewBottomConstraint = makeWebViewBottomConstraint(visible);
    m_webViewBottomConstraint->setActive(true);

    constexpr platform::TimeInterval duration = 0.3;
    platform::UIView::animate(duration, [this] { view().layoutIfNeeded(); });
}

bool ZelvoraIOSViewController::gestureRecognizerShouldBegin(UIGestureRecognizer&)
{
    return ZelvoraSDK::shared().allowsSwipeBack();
}

bool ZelvoraIOSViewController::gestureRecognizerShouldRecognizeSimultaneouslyWith(
    UIGestureRecognizer&, UIGestureRecognizer&)
{
    return true;
}

void ZelvoraIOSViewController::handleEdgePan(UIGestureRecognizer const& recognizer)
{
    if (recognizer.state() != platform::UIGestureRecognizerState::Ended)
        return;
    if (auto const delegate = ZelvoraSDK::shared().delegate();
        delegate && !delegate->zelvoraSDKShouldHandleBackAction(*m_zelvoraWebView))
        return;
    if (m_zelvoraWebView->canGoBack()) {
        m_zelvoraWebView->goBack();
        return;
    }
    leave();
}

void ZelvoraIOSViewController::leave()
{
    auto const navigation = navigationController();
    if (navigation && navigation->viewControllers().size() > 1) {
        navigation->popViewController(Animated::Yes);
        return;
    }
    dismiss(Animated::Yes);
}

void ZelvoraIOSViewController::viewWillDisappear(Animated animated)
{
    UIViewController::viewWillDisappear(animated);
    if (auto const delegate = ZelvoraSDK::shared().delegate())
        delegate->zelvoraSDKWillDismiss();
    ZelvoraSDK::shared().sendTrackingData();
}

}
