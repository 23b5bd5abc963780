#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/module/SurfaceTest.h"

/// Handles the messages of a web view of the host's own, with the module.
@interface HostMessageHandler : NSObject <WKScriptMessageHandler>
@property (nonatomic, strong) WKWebView* webView;
@property (nonatomic, strong) UIViewController* viewController;
@end

@implementation HostMessageHandler

- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message
{
    (void)userContentController;
    [ZelvoraJavascriptInterface handleMessage:message webView:_webView viewController:_viewController];
}

@end

namespace zelvora::tests {

namespace {

class JavascriptInterfaceTest : public SurfaceTest {
protected:
    JavascriptInterfaceTest()
    {
        WKWebViewConfiguration* const configuration = [[WKWebViewConfiguration alloc] init];
        configuration.userContentController = [[WKUserContentController alloc] init];
        [configuration.userContentController addScriptMessageHandler:m_handler
                                                                name:ZelvoraJavascriptInterface.handlerName];
        [configuration.userContentController addScriptMessageHandler:m_handler name:@"other"];
        m_page = [[WKWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1) configuration:configuration];
    }
    void post(id body, NSString* handler = @"zelvora")
    {
        [m_page doublePost:body toHandler:handler];
        settle();
    }

    HostMessageHandler* m_handler = [[HostMessageHandler alloc] init];
    WKWebView* m_page = nil;
};

TEST_F(JavascriptInterfaceTest, NamesItsHandlerAndTheActionsInItsScript)
{
    [m_sdk addCustomActionWithFunctionName:@"share" action:^(NSString*) {}];
    EXPECT_EQ(textOf(ZelvoraJavascriptInterface.handlerName), "zelvora");
    auto const source = textOf(ZelvoraJavascriptInterface.scriptSource);
    EXPECT_TRUE(source.starts_with("window.ZelvoraSDKBridge = {\n")) << source;
    EXPECT_NE(source.find("var customKeys = [\"share\"];"), std::string::npos) << source;
}

TEST_F(JavascriptInterfaceTest, AnAnswerIsEvaluatedInTheWebViewThatWasPassed)
{
    m_handler.webView = m_page;
    [ZelvoraStorage set:@"light" forKey:@"theme" expireSec:nil];
    post(@ { @"action" : @"getItem", @"key" : @"theme", @"callback" : @"shop.onTheme" });
    EXPECT_EQ(doubles::evaluatedScripts(m_page),
        (std::vector<std::string> { "javascript:alert('\"light\"');", "shop.onTheme(\"light\");" }));
}

TEST_F(JavascriptInterfaceTest, WithoutAWebViewNothingIsAnswered)
{
    post(@ { @"action" : @"getItem", @"key" : @"theme", @"callback" : @"shop.onTheme" });
    EXPECT_TRUE(doubles::evaluatedScripts(m_page).empty());
}

TEST_F(JavascriptInterfaceTest, CloseDismissesTheControllerThatWasPassed)
{
    UINavigationController* const stack = showStack();
    UIViewController* const shop = [[UIViewController alloc] initWithNibName:nil bundle:nil];
    [stack presentViewController:shop animated:NO completion:nil];
    m_handler.viewController = shop;
    post(@ { @"action" : @"close" });
    EXPECT_EQ(stack.presentedViewController, nil);
}

TEST_F(JavascriptInterfaceTest, TheControllerIsKeptUntilItIsClosed)
{
    __weak UIViewController* weak = nil;
    @autoreleasepool {
        UIViewController* shop = [[UIViewController alloc] initWithNibName:nil bundle:nil];
        weak = shop;
        m_handler.viewController = shop;
        [m_page doublePost:@ { @"action" : @"close" } toHandler:@"zelvora"];
        m_handler.viewController = nil;
    }
    EXPECT_NE(weak, nil);
    settle();
    EXPECT_EQ(weak, nil);
}

TEST_F(JavascriptInterfaceTest, MessagesOfOtherNamesAndClassesAreDropped)
{
    m_handler.webView = m_page;
    errorLines();
    post(@ { @"action" : @"getItem", @"key" : @"theme", @"callback" : @"shop.onTheme" }, @"other");
    post(@"getItem");
    post(@[ @"getItem" ]);
    post(@7);
    post([[NSObject alloc] init]);
    post(@{@"action" : @7});
    post(@ { @"action" : @"getItem", @"key" : [[NSObject alloc] init], @"callback" : @"shop.onTheme" });
    EXPECT_TRUE(doubles::evaluatedScripts(m_page).empty());
    EXPECT_TRUE(errorLines().empty());
}

}

}
