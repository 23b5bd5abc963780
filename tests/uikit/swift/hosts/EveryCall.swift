import UIKit
import WebKit
import ZelvoraIOS

/// Makes every call that a host can make, with the results in variables of the types that were promised.
@MainActor final class EveryCall: UIViewController, ZelvoraSDK.ZelvoraSDKDelegate {
  private var failures: [String] = []

  func configure(footer: UIView) {
    let sdk: ZelvoraSDK = ZelvoraSDK.shared
    let plain: Result<Void, ZelvoraSDKError> = sdk.initialize(
      userKey: "user", apiKey: "key", isTrackingEnabled: true, isDev: false, allowsSwipeBack: true)
    if case .failure(.initializing) = plain {}

    sdk.initialize(
      userKey: "user", apiKey: "key", isTrackingEnabled: true, isDev: true, allowsSwipeBack: false,
      headerViewProvider: { (container: UIViewController) in container.isViewLoaded ? nil : UIView() },
      footerViewProvider: { _ in footer },
      delegate: self,
      completion_handler: { (error: ZelvoraSDKError?) in
        Task { @MainActor in self.failures.append(error?.code ?? "") }
      })

    sdk.headerViewProvider = nil
    let header: (@MainActor @Sendable (UIViewController) -> UIView?)? = sdk.headerViewProvider
    sdk.footerViewProvider = header
    _ = sdk.footerViewProvider?(self)
    sdk.allowsSwipeBack = !sdk.allowsSwipeBack
    let delegate: (any ZelvoraSDK.ZelvoraSDKDelegate)? = sdk.delegate
    sdk.delegate = delegate
    sdk.onPageNavigation = { (url: String) in print(url) }
    let onPageNavigation: ((String) -> Void)? = sdk.onPageNavigation
    onPageNavigation?("https://shop.example")
    let isFooterVisible: Bool = sdk.isFooterVisible
    sdk.setFooterVisible(!isFooterVisible)
    sdk.addCustomAction(functionName: "share", action: { (data: String?) in print(data ?? "nothing") })
    let actions: [String: (String?) -> Void] = sdk.getCustomActions()
    actions["share"]?(nil)
    sdk.sendTrackingData()
  }

  func open() {
    ZelvoraSDK.shared.start(from: self)
    let result: Result<Void, ZelvoraSDKError> = ZelvoraSDK.shared.start(from: self)
    switch result {
    case .success: break
    case .failure(.networkError(let detail)), .failure(.internalApiError(let detail)), .failure(.otherError(let detail)):
      failures.append(detail ?? "")
    case .failure(.shopIdNotInitialized), .failure(.mediaKeyNotInitialized), .failure(.userKeyNotInitialized),
      .failure(.adIdNotInitialized), .failure(.initializing):
      break
    }
  }

  func place() {
    let created: ZelvoraWebView? = ZelvoraSDK.shared.createWebView()
    let url: String? = ZelvoraSDK.shared.getCurrentUrl()
    let own = ZelvoraWebView(frame: CGRect(), urlString: url ?? "", allowsSwipeBack: true)
    own.parentViewController = self
    let parent: UIViewController? = own.parentViewController
    let current: String? = own.currentUrl
    if own.canGoBack, parent != nil, current != nil { own.goBack() }
    let view: UIView = own
    view.addSubview(created ?? own)
    let navigationDelegate: any WKNavigationDelegate = own
    let messageHandler: any WKScriptMessageHandler = own
    _ = (navigationDelegate, messageHandler)
    ZelvoraSDK.shared.activeWebView = own
    let active: ZelvoraWebView? = ZelvoraSDK.shared.activeWebView
    _ = active
  }

  func presentContainer(pan: UIGestureRecognizer) {
    let container = ZelvoraIOSViewController(urlString: "https://shop.example")
    let screen: UIViewController = container
    let gestures: any UIGestureRecognizerDelegate = container
    _ = container.gestureRecognizerShouldBegin(pan)
    _ = container.gestureRecognizer(pan, shouldRecognizeSimultaneouslyWith: pan)
    _ = (screen, gestures)
    present(container, animated: true, completion: nil)
  }

  func handle(message: WKScriptMessage, webView: WKWebView) {
    let name: String = ZelvoraJavascriptInterface.handlerName
    let source: String = ZelvoraJavascriptInterface.scriptSource
    _ = WKUserScript(source: name + source, injectionTime: .atDocumentStart, forMainFrameOnly: false)
    ZelvoraJavascriptInterface.handle(message: message, webView: webView, viewController: self)
    ZelvoraJavascriptInterface.handle(message: message, webView: nil, viewController: nil)
  }

  // ZelvoraSDK.ZelvoraSDKDelegate
  func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool { webView.canGoBack }
  func zelvoraSDKWillDismiss() {}
}

/// A delegate need not derive from NSObject.
final class PlainDelegate: ZelvoraSDK.ZelvoraSDKDelegate {
  func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool { true }
  func zelvoraSDKWillDismiss() {}
}

// What any thread may call.
func store(event: [String: Any]) {
  ZelvoraStorage.set("light", forKey: "theme", expireSec: 3600)
  ZelvoraStorage.set(["list": [1, 2.5, true]], forKey: "list", expireSec: nil)
  ZelvoraStorage.set(nil, forKey: "theme")
  let value: Any? = ZelvoraStorage.get(forKey: "theme")
  let text: String? = ZelvoraStorage.getString(forKey: "theme")
  ZelvoraStorage.remove(forKey: "theme")
  ZelvoraStorage.saveShopId("shop")
  let shopId: String? = ZelvoraStorage.getValidShopId()
  ZelvoraStorage.saveEventTrackingData(event)
  let events: [[String: Any]] = ZelvoraStorage.getEventTrackingData()
  ZelvoraStorage.removeEventTrackingData(count: events.count)
  ZelvoraStorage.clearEventTrackingData()
  _ = (value, text, shopId, ZelvoraStorage(), ZelvoraLogger(), ZelvoraJavascriptInterface())
}

func log(presenter: UIViewController) {
  ZelvoraLogger.d("d")
  ZelvoraLogger.i("i")
  ZelvoraLogger.e("e")
  ZelvoraLogger.l("l")
  ZelvoraLogger.w("w")
  ZelvoraLogger.c("c")
  ZelvoraLogger.n("n")
  ZelvoraLogger.t("t")
  ZelvoraLogger.f("f")
  let number: Double = ZelvoraIOSVersionNumber
  let version: String = ZelvoraIOSVersionString
  _ = (number, version)
  ZelvoraSDK.shared.start(from: presenter)
  ZelvoraSDK.shared.sendTrackingData()
}

func describe(error: ZelvoraSDKError) -> String {
  let asError: any Error = error
  let localized: any LocalizedError = error
  let code: String = error.code
  let type: ZelvoraSDKErrorType = error.errorType
  let description: String? = error.errorDescription
  let types: Set<ZelvoraSDKErrorType> = [.error, .warning, .info, .debug]
  let parsed: ZelvoraSDKErrorType? = ZelvoraSDKErrorType(rawValue: "INFO")
  let raw: String = type.rawValue
  _ = (asError, localized, types, parsed, error == .otherError(nil), error != .networkError("detail"))
  return code + raw + (description ?? "")
}

// One instance, and errors, may go to another thread.
func send() {
  let sdk = ZelvoraSDK.shared
  let error = ZelvoraSDKError.internalApiError("detail")
  Task.detached { @Sendable in
    sdk.sendTrackingData()
    _ = error.code
  }
}
