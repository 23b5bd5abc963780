import UIKit

/// The window's root around the app's navigation stack. It is on no stack itself, so that the shop can be presented from it.
final class RootViewController: UIViewController {
  override func viewDidLoad() {
    super.viewDidLoad()
    let stack = UINavigationController(rootViewController: HomeViewController())
    // The shop brings its own header. With the stack's bar a pushed shop would have two.
    stack.isNavigationBarHidden = true
    addChild(stack)
    stack.view.frame = view.bounds
    stack.view.autoresizingMask = [.flexibleWidth, .flexibleHeight]
    view.addSubview(stack.view)
    stack.didMove(toParent: self)
  }
}
