// Own stand-in for the UIKit overlay. Type-check only.
@_exported import UIKit

extension UIApplicationDelegate {
  @MainActor public static func main() { fatalError() }
}

extension UIAction {
  @MainActor public convenience init(title: String, handler: @escaping @MainActor (UIAction) -> Void) {
    fatalError()
  }
}
