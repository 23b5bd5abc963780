import UIKit
import ZelvoraIOS

/// The app's side of the shop. The SDK refers to its delegate weakly, so somebody has to keep it: here the class itself.
@MainActor
final class Shop: ZelvoraSDK.ZelvoraSDKDelegate {
  static let shared = Shop()

  /// Where the user reads why there is no shop.
  var showError: ((String) -> Void)?
  private var isConfigured = false

  private init() {
    // Before a page is opened: it has functions for the actions that are registered by then.
    ZelvoraSDK.shared.addCustomAction(functionName: "share") { [weak self] text in
      // The SDK calls it on the main thread, which its type does not say.
      MainActor.assumeIsolated { self?.share(text) }
    }
  }

  /// The user's tap. The presenter decides how the shop appears: on a navigation stack it is pushed, else presented.
  func open(from presenter: UIViewController) {
    if !isConfigured { initialize() }
    // A footer that a page has hidden would be hidden at this visit, too.
    ZelvoraSDK.shared.setFooterVisible(true)
    // Until the SDK is ready the call succeeds and the shop appears later. The handler below has its errors too.
    ZelvoraSDK.shared.start(from: presenter)
  }

  private func initialize() {
    isConfigured = true
    ZelvoraSDK.shared.initialize(
      userKey: "user-key",
      apiKey: "api-key",
      isTrackingEnabled: true,
      isDev: false,
      allowsSwipeBack: true,
      headerViewProvider: { container in makeShopHeader(container) },
      footerViewProvider: { _ in makeShopFooter() },
      delegate: self,
      // On any thread.
      completion_handler: { error in
        guard let error else { return }
        Task { @MainActor in Shop.shared.report(error) }
      })
  }

  private func report(_ error: ZelvoraSDKError) {
    print("\(error.code): \(error.errorDescription ?? "")")
    switch error {
    case .initializing, .internalApiError:
      // The attempt is still running. If it finds no shop, the waiting start fails too, and the user reads that alone.
      break
    case .shopIdNotInitialized:
      // The attempt is over. Not here, but at the user's next tap, there is another.
      guard isConfigured else { return }
      isConfigured = false
      showError?("The shop cannot be reached. Tap again to retry.")
    default:
      showError?("The shop cannot be opened (\(error.code)).")
    }
  }

  private func share(_ text: String?) {
    print("A page shares \(text ?? "itself")")
  }

  // ZelvoraSDK.ZelvoraSDKDelegate

  /// After a back swipe. The container goes back in the page's history, or leaves.
  func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool { true }
  func zelvoraSDKWillDismiss() {}
}
