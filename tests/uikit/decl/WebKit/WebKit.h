// Own, minimal declarations of the WebKit API the adapter uses.
#pragma once
#import <UIKit/UIKit.h>
NS_ASSUME_NONNULL_BEGIN
@class WKWebView, WKUserContentController, WKNavigationAction;
NS_SWIFT_UI_ACTOR
@interface WKNavigation : NSObject
@end
NS_SWIFT_UI_ACTOR
@interface WKScriptMessage : NSObject
@property (nonatomic, readonly, copy) id body;
@property (nullable, nonatomic, readonly, weak) WKWebView* webView;
@property (nonatomic, readonly, copy) NSString* name;
@end
NS_SWIFT_UI_ACTOR
@protocol WKScriptMessageHandler <NSObject>
@required
- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message;
@end
typedef NS_ENUM(NSInteger, WKUserScriptInjectionTime) {
    WKUserScriptInjectionTimeAtDocumentStart,
    WKUserScriptInjectionTimeAtDocumentEnd
};
NS_SWIFT_UI_ACTOR
@interface WKUserScript : NSObject <NSCopying>
@property (nonatomic, readonly, copy) NSString* source;
@property (nonatomic, readonly) WKUserScriptInjectionTime injectionTime;
@property (nonatomic, readonly, getter=isForMainFrameOnly) BOOL forMainFrameOnly;
- (instancetype)initWithSource:(NSString*)source injectionTime:(WKUserScriptInjectionTime)t forMainFrameOnly:(BOOL)m;
@end
NS_SWIFT_UI_ACTOR
@interface WKUserContentController : NSObject
@property (nonatomic, readonly, copy) NSArray<WKUserScript*>* userScripts;
- (void)addUserScript:(WKUserScript*)s;
- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)h name:(NSString*)name;
- (void)removeScriptMessageHandlerForName:(NSString*)name;
@end
NS_SWIFT_UI_ACTOR
@interface WKWebViewConfiguration : NSObject <NSCopying>
@property (nonatomic, strong) WKUserContentController* userContentController;
@end
typedef NS_ENUM(NSInteger, WKNavigationActionPolicy) { WKNavigationActionPolicyCancel, WKNavigationActionPolicyAllow };
NS_SWIFT_UI_ACTOR
@interface WKNavigationAction : NSObject
@property (nonatomic, readonly, copy) NSURLRequest* request;
@end
NS_SWIFT_UI_ACTOR
@protocol WKNavigationDelegate <NSObject>
@optional
- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler;
- (void)webView:(WKWebView*)webView didFinishNavigation:(null_unspecified WKNavigation*)navigation;
- (void)webView:(WKWebView*)webView didStartProvisionalNavigation:(null_unspecified WKNavigation*)navigation;
- (void)webView:(WKWebView*)webView didCommitNavigation:(null_unspecified WKNavigation*)navigation;
- (void)webViewWebContentProcessDidTerminate:(WKWebView*)webView;
- (void)webView:(WKWebView*)webView
    didFailProvisionalNavigation:(null_unspecified WKNavigation*)navigation
                       withError:(NSError*)error;
@end
@interface WKWebView : UIView
@property (nonatomic, readonly, copy) WKWebViewConfiguration* configuration;
@property (nullable, nonatomic, weak) id<WKNavigationDelegate> navigationDelegate;
- (instancetype)initWithFrame:(CGRect)frame
                configuration:(WKWebViewConfiguration*)configuration NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(CGRect)frame NS_UNAVAILABLE;
- (nullable WKNavigation*)loadRequest:(NSURLRequest*)request;
- (void)evaluateJavaScript:(NSString*)js
         completionHandler:(void (^_Nullable)(_Nullable id, NSError* _Nullable error))completionHandler;
@property (nonatomic) BOOL allowsBackForwardNavigationGestures;
@property (nullable, nonatomic, readonly, copy) NSURL* URL;
@property (nonatomic, readonly) BOOL canGoBack;
@property (nonatomic, getter=isInspectable) BOOL inspectable API_AVAILABLE_IOS(16.4);
- (nullable WKNavigation*)goBack;
- (nullable WKNavigation*)reload;
@end
NS_ASSUME_NONNULL_END
