import UIKit
import ZelvoraIOS

// rejected: main actor-isolated property 'failed' can not be mutated from a
@MainActor final class Host: UIViewController {
  private var failed = false

  func go() {
    ZelvoraSDK.shared.initialize(
      userKey: "user", apiKey: "key", isTrackingEnabled: true, isDev: false, allowsSwipeBack: true,
      completion_handler: { _ in self.failed = true })
  }
}
