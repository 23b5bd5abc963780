#include "tests/ZelvoraIOS/support/ContainerTest.h"

#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::platform {

namespace {

void print(NSLayoutAnchor const& anchor, std::ostream& stream)
{
    stream << anchor.view << (anchor.item == NSLayoutAnchor::Item::SafeArea ? ".safeArea" : "");
    switch (anchor.attribute) {
    case NSLayoutAttribute::Top:
        stream << ".top";
        return;
    case NSLayoutAttribute::Leading:
        stream << ".leading";
        return;
    case NSLayoutAttribute::Trailing:
        stream << ".trailing";
        return;
    case NSLayoutAttribute::Bottom:
        stream << ".bottom";
        return;
    }
}

}

void PrintTo(NSLayoutConstraint const& constraint, std::ostream* stream)
{
    print(constraint.firstAnchor(), *stream);
    *stream << " = ";
    print(constraint.secondAnchor(), *stream);
}

void PrintTo(WKNavigationActionPolicy policy, std::ostream* stream)
{
    *stream << (policy == WKNavigationActionPolicy::Allow ? "allow" : "cancel");
}

}

namespace zelvora::memory {

void PrintTo(Transition const& transition, std::ostream* stream)
{
    switch (transition.kind) {
    case Transition::Kind::Push:
        *stream << "push ";
        break;
    case Transition::Kind::Pop:
        *stream << "pop ";
        break;
    case Transition::Kind::Present:
        *stream << "present ";
        break;
    case Transition::Kind::Dismiss:
        *stream << "dismiss ";
        break;
    }
    *stream << transition.controller << (transition.animated == platform::Animated::Yes ? " animated" : "");
}

}

namespace zelvora::tests {

bool DelegateSpy::zelvoraSDKShouldHandleBackAction(ZelvoraWebView& webView)
{
    askedWith.push_back(&webView);
    if (onAsked)
        onAsked();
    return answer;
}

void DelegateSpy::zelvoraSDKWillDismiss()
{
    ++dismissals;
    if (onWillDismiss)
        onWillDismiss();
}

void ContainerTest::finishInitialization()
{
    platform.runUntilIdle();
    if (platform.urlSession().unansweredCount() > 0)
        platform.urlSession().answer(200, R"({"data": {"shopId": "shop-1"}})");
    allowTrackingAndFinish();
}

std::shared_ptr<ZelvoraIOSViewController> ContainerTest::makeContainer(std::string const& url)
{
    auto container = std::make_shared<ZelvoraIOSViewController>(url);
    (void)container->view();
    return container;
}

std::shared_ptr<ZelvoraIOSViewController> ContainerTest::containerPresentedBy(
    platform::UIViewController const& presenter)
{
    return std::dynamic_pointer_cast<ZelvoraIOSViewController>(memory::peer(presenter).presentedViewController());
}

std::shared_ptr<ZelvoraIOSViewController> ContainerTest::containerOn(memory::NavigationController const& stack)
{
    return std::dynamic_pointer_cast<ZelvoraIOSViewController>(stack.topViewController());
}

std::shared_ptr<memory::NavigationController> ContainerTest::makeStack(
    std::shared_ptr<platform::UIViewController> root, memory::NavigationController::SwipeToPop swipe)
{
    auto stack = std::make_shared<memory::NavigationController>(swipe);
    stack->pushViewController(std::move(root), Animated::No);
    return stack;
}

std::shared_ptr<memory::View> ContainerTest::makeBar(double height)
{
    return std::make_shared<memory::View>(memory::IntrinsicSize { .height = height });
}

void ContainerTest::setHeader(std::shared_ptr<platform::UIView> view)
{
    sdk().setHeaderViewProvider([view = std::move(view)](platform::UIViewController&) { return view; });
}

void ContainerTest::setFooter(std::shared_ptr<platform::UIView> view)
{
    sdk().setFooterViewProvider([view = std::move(view)](platform::UIViewController&) { return view; });
}

memory::WebView& ContainerTest::engine(ZelvoraWebView const& view)
{
    auto* const found = view.subviews().empty() ? nullptr : dynamic_cast<memory::WebView*>(view.subviews()[0].get());
    if (!found)
        platform::fatalError("the view has no system web view");
    return *found;
}

memory::WebView& ContainerTest::engine()
{
    auto const view = sdk().activeWebView();
    if (!view)
        platform::fatalError("there is no active web view");
    return engine(*view);
}

void ContainerTest::post(Dictionary body)
{
    EXPECT_TRUE(engine().postMessage("zelvora", std::move(body)));
}

platform::URL ContainerTest::url(std::string const& text)
{
    auto const parsed = platform::URL::parse(text);
    if (!parsed)
        platform::fatalError("a test's URL does not parse: " + text);
    return *parsed;
}

}
