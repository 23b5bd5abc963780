import UIKit

// The SDK is not initialized here but when the user first opens the shop, as it asks about tracking then.
@main
final class AppDelegate: UIResponder, UIApplicationDelegate {}
