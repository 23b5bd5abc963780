import UIKit
import ZelvoraIOS

@main
final class AppDelegate: UIResponder, UIApplicationDelegate {
  func application(
    _ application: UIApplication, didFinishLaunchingWithOptions launchOptions: [UIApplication.LaunchOptionsKey: Any]?
  ) -> Bool {
    // Before a page is opened: it has functions for the actions that are registered by then.
    ZelvoraSDK.shared.addCustomAction(functionName: "share") { text in print("A page shares \(text ?? "itself")") }
    ZelvoraSDK.shared.initialize(
      userKey: "user-key",
      apiKey: "api-key",
      isTrackingEnabled: true,
      isDev: false,
      allowsSwipeBack: true,
      // On any thread: it touches neither a view nor the state of this object.
      completion_handler: { error in
        if let error { print("\(error.code): \(error.errorDescription ?? "")") }
      })
    return true
  }
}
