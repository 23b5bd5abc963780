#if canImport(ZelvoraObjC)
  // As a package, whose targets hold one language each, the Objective-C half is a module of its own.
  @_exported import ZelvoraObjC
#endif
import Foundation
import UIKit

extension ZelvoraSDK {
  /// The host's side of the container. The SDK refers to it weakly.
  @MainActor
  public protocol ZelvoraSDKDelegate: AnyObject {
    /// The user completed a back swipe. Return true to let the container handle it, by going back in the page's history
    /// or else leaving the screen; return false if the host has handled it.
    func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool
    /// The container is about to disappear, for good or because another screen will cover it.
    func zelvoraSDKWillDismiss()
  }

  /// Stores the configuration and starts initialization, without waiting for it: in parallel, the SDK finds the shop id
  /// (stored for a day, else looked up with `apiKey`) and, as soon as the app is active, asks the user for permission to
  /// track, once per install and whatever `isTrackingEnabled` is. Then it uploads queued events and carries out a
  /// `start` that was called in the meantime.
  ///
  /// Fails with `initializing` while an earlier call's initialization is running; nothing changes then, and the earlier
  /// call's handler receives the error, or this call's if the earlier one passed none. Afterwards it may be called again
  /// and replaces every argument of the earlier call, with nil too. Keys are not validated here: a wrong API key
  /// surfaces as an `internalApiError` of the lookup. `isDev` selects the development environment.
  ///
  /// The completion handler is called with an error each time something fails, never on success. Errors of the lookup
  /// arrive on a background thread.
  @MainActor @discardableResult
  public func initialize(
    userKey: String,
    apiKey: String,
    isTrackingEnabled: Bool,
    isDev: Bool,
    allowsSwipeBack: Bool,
    headerViewProvider: (@MainActor (UIViewController) -> UIView?)? = nil,
    footerViewProvider: (@MainActor (UIViewController) -> UIView?)? = nil,
    delegate: (any ZelvoraSDKDelegate)? = nil,
    completion_handler: (@Sendable (ZelvoraSDKError?) -> Void)? = nil
  ) -> Result<Void, ZelvoraSDKError> {
    let handler = completion_handler.map { handler in
      { @Sendable (error: (any Error)?) in handler(error.map(ZelvoraSDKError.init(bridging:))) }
    }
    let error = __initialize(
      withUserKey: userKey, apiKey: apiKey, isTrackingEnabled: isTrackingEnabled, isDev: isDev,
      allowsSwipeBack: allowsSwipeBack, headerViewProvider: headerViewProvider,
      footerViewProvider: footerViewProvider, delegate: nil, completion_handler: handler)
    // A call that was refused leaves the delegate as it was.
    if error == nil {
      self.delegate = delegate
    }
    return Result(bridging: error)
  }

  /// Shows the site full screen: pushed onto the presenter's navigation stack if it is one or is on one, else presented
  /// modally. Any thread; the container appears later, on the main thread, and the presenter is kept alive until then.
  ///
  /// During initialization the call succeeds and the launch is deferred; the latest presenter is used once
  /// initialization ends. Otherwise it fails with `shopIdNotInitialized`, `mediaKeyNotInitialized` or
  /// `userKeyNotInitialized` if one of these is missing. The completion handler receives the error as well.
  @discardableResult
  public func start(from viewController: UIViewController) -> Result<Void, ZelvoraSDKError> {
    Result(bridging: __start(from: viewController))
  }

  /// A copy of the table of custom actions. Any thread.
  public func getCustomActions() -> [String: (String?) -> Void] {
    __getCustomActions()
  }

  /// nil if the host has released its delegate, or none was set from Swift. Any thread.
  public var delegate: (any ZelvoraSDKDelegate)? {
    get { (__delegateHolder as? DelegateHolder)?.delegate }
    set { __delegateHolder = newValue.map(DelegateHolder.init) }
  }
}

/// Stands for the host's delegate, which may be any class, towards the Objective-C half, which keeps this object.
private final class DelegateHolder: NSObject, __ZelvoraSDKDelegate {
  nonisolated(unsafe) weak var delegate: (any ZelvoraSDK.ZelvoraSDKDelegate)?

  nonisolated init(_ delegate: any ZelvoraSDK.ZelvoraSDKDelegate) {
    self.delegate = delegate
  }

  func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool {
    delegate?.zelvoraSDKShouldHandleBackAction(webView) ?? true
  }

  func zelvoraSDKWillDismiss() {
    delegate?.zelvoraSDKWillDismiss()
  }
}

extension Result where Success == Void, Failure == ZelvoraSDKError {
  fileprivate init(bridging error: (any Error)?) {
    self = error.map { .failure(ZelvoraSDKError(bridging: $0)) } ?? .success(())
  }
}

/// 1.0.
public var ZelvoraIOSVersionNumber: Double {
  __ZelvoraIOSVersionNumber
}

/// The version as text.
public var ZelvoraIOSVersionString: String {
  ZelvoraSDK.__versionString
}
