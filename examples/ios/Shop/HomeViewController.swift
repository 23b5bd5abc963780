import UIKit
import ZelvoraIOS

/// The app's own first screen, with a button that opens the shop.
final class HomeViewController: UIViewController {
  override func viewDidLoad() {
    super.viewDidLoad()
    let open = UIButton(
      type: .system,
      primaryAction: UIAction(title: "Open the shop") { [weak self] _ in
        self?.openShop()
      })
    open.frame = view.bounds
    open.autoresizingMask = [.flexibleWidth, .flexibleHeight]
    view.addSubview(open)
  }

  private func openShop() {
    // As long as the SDK is not ready, the call succeeds and the shop appears later.
    if case .failure(let error) = ZelvoraSDK.shared.start(from: self) {
      print("\(error.code): \(error.errorDescription ?? "")")
    }
  }
}
