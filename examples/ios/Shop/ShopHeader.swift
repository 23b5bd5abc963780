import UIKit
import ZelvoraIOS

/// The bar above the page, with a back button. The container owns and places it, but for its height.
@MainActor
func makeShopHeader(_ container: UIViewController) -> UIView {
  let header = UIView()
  // The container is white, and in the dark appearance so is text.
  header.backgroundColor = .systemBackground
  let action = UIAction(title: "Back") { [weak container] _ in
    if let container { goBack(container) }
  }
  let back = UIButton(type: .system, primaryAction: action)
  back.translatesAutoresizingMaskIntoConstraints = false
  header.addSubview(back)
  NSLayoutConstraint.activate([
    header.heightAnchor.constraint(equalToConstant: 44),
    back.leadingAnchor.constraint(equalTo: header.safeAreaLayoutGuide.leadingAnchor, constant: 16),
    back.topAnchor.constraint(equalTo: header.topAnchor),
    back.bottomAnchor.constraint(equalTo: header.bottomAnchor),
  ])
  return header
}

@MainActor
private func goBack(_ container: UIViewController) {
  if let webView = ZelvoraSDK.shared.activeWebView, webView.canGoBack {
    webView.goBack()
  } else if let stack = container.navigationController, stack.viewControllers.count > 1 {
    stack.popViewController(animated: true)
  } else {
    container.dismiss(animated: true)
  }
}
