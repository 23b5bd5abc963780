#include "tests/uikit/doubles/WebKit.h"
#include "tests/uikit/module/SurfaceTest.h"

namespace zelvora::tests {

namespace {

/// nil where the headers ask for an object: Objective-C hosts can pass it all the same.
class NilArgumentTest : public SurfaceTest {
protected:
    NSString* m_noText = nil;
    UIViewController* m_noController = nil;
};

TEST_F(NilArgumentTest, NoKeysAreEmptyKeys)
{
    EXPECT_EQ([m_sdk initializeWithUserKey:m_noText
                                    apiKey:m_noText
                         isTrackingEnabled:YES
                                     isDev:NO
                           allowsSwipeBack:NO
                        headerViewProvider:nil
                        footerViewProvider:nil
                                  delegate:nil
                        completion_handler:nil],
        nil);
    waitUntilReady();
    EXPECT_TRUE(textOf([m_sdk createWebView].currentUrl).ends_with("&uKey=&rid=M-AD-SDK"));
}

TEST_F(NilArgumentTest, NoPresenterIsAnOtherError)
{
    NSMutableArray<NSError*>* const reported = [NSMutableArray arrayWithCapacity:1];
    ZelvoraCompletionHandler const keepError = ^(NSError* error) { [reported addObject:error]; };
    makeReady({ .completionHandler = keepError });
    NSError* const error = [m_sdk startFromViewController:m_noController];
    EXPECT_EQ(error.code, ZelvoraSDKErrorOtherError);
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorCodeKey]), "E300");
    EXPECT_EQ(reported.count, 1U);
}

TEST_F(NilArgumentTest, NoNameOfAnActionIsTheEmptyNameAndNoActionIsNone)
{
    ZelvoraCustomAction none = nil;
    [m_sdk addCustomActionWithFunctionName:@"share" action:none];
    EXPECT_EQ([m_sdk getCustomActions].count, 0U);
    EXPECT_EQ(textOf(ZelvoraJavascriptInterface.scriptSource).find("share"), std::string::npos);
    [m_sdk addCustomActionWithFunctionName:m_noText action:^(NSString*) {}];
    EXPECT_NE([m_sdk getCustomActions][@""], nil);
}

TEST_F(NilArgumentTest, NoAddressLeavesTheViewBlank)
{
    ZelvoraWebView* const view = [[ZelvoraWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1)
                                                             urlString:m_noText
                                                       allowsSwipeBack:NO];
    EXPECT_EQ(view.currentUrl, nil);
    EXPECT_TRUE(doubles::loadedRequests(pageIn(view)).empty());
    ZelvoraIOSViewController* const container = [[ZelvoraIOSViewController alloc] initWithUrlString:m_noText];
    EXPECT_EQ(webViewIn(container.view).currentUrl, nil);
}

TEST_F(NilArgumentTest, NoKeyOfAValueIsTheEmptyKey)
{
    [ZelvoraStorage set:@"a" forKey:m_noText expireSec:nil];
    EXPECT_EQ(textOf([ZelvoraStorage getForKey:@""]), "a");
    EXPECT_EQ(textOf([ZelvoraStorage getForKey:m_noText]), "a");
    EXPECT_EQ(textOf([ZelvoraStorage getStringForKey:m_noText]), "a");
    [ZelvoraStorage removeForKey:m_noText];
    EXPECT_EQ([ZelvoraStorage getForKey:@""], nil);
    [ZelvoraStorage saveShopId:m_noText];
    EXPECT_EQ(textOf([ZelvoraStorage getValidShopId]), "");
}

TEST_F(NilArgumentTest, NoEventIsRefused)
{
    NSDictionary<NSString*, id>* none = nil;
    [ZelvoraStorage saveEventTrackingData:none];
    EXPECT_EQ([ZelvoraStorage getEventTrackingData].count, 0U);
}

TEST_F(NilArgumentTest, NoMessageIsAnEmptyLineInTheLog)
{
    testing::internal::CaptureStdout();
    [ZelvoraLogger e:m_noText];
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "[ZelvoraSDK-debug] \n");
}

TEST_F(NilArgumentTest, NoMessageOfAPageIsDropped)
{
    WKScriptMessage* none = nil;
    [ZelvoraJavascriptInterface handleMessage:none webView:nil viewController:nil];
    ZelvoraWebView* const view = [[ZelvoraWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1)
                                                             urlString:@"https://shop.example/"
                                                       allowsSwipeBack:NO];
    WKUserContentController* controller = nil;
    [view userContentController:controller didReceiveScriptMessage:none];
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/");
}

TEST_F(NilArgumentTest, NoDecisionHandlerIsNotCalled)
{
    ZelvoraWebView* const view = [[ZelvoraWebView alloc] initWithFrame:CGRectMake(0, 0, 1, 1)
                                                             urlString:@"https://shop.example/"
                                                       allowsSwipeBack:NO];
    WKNavigationAction* action = nil;
    void (^none)(WKNavigationActionPolicy) = nil;
    [view webView:pageIn(view) decidePolicyForNavigationAction:action decisionHandler:none];
    EXPECT_EQ(textOf(view.currentUrl), "https://shop.example/");
}

}

}
