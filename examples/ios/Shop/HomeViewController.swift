import UIKit

/// The app's own first screen, with a button for each way to open the shop.
final class HomeViewController: UIViewController {
  private let message = UILabel()

  override func viewDidLoad() {
    super.viewDidLoad()
    view.backgroundColor = .systemBackground
    Shop.shared.showError = { [weak self] text in self?.message.text = text }

    // A page that closes itself closes the shop only if it was presented.
    let present = button("Open the shop") { home in
      if let root = home.view.window?.rootViewController { Shop.shared.open(from: root) }
    }
    let push = button("Push the shop") { home in Shop.shared.open(from: home) }

    let column = UIStackView(arrangedSubviews: [present, push, message])
    column.axis = .vertical
    column.translatesAutoresizingMaskIntoConstraints = false
    view.addSubview(column)
    NSLayoutConstraint.activate([
      column.topAnchor.constraint(equalTo: view.safeAreaLayoutGuide.topAnchor, constant: 32),
      column.leadingAnchor.constraint(equalTo: view.leadingAnchor, constant: 16),
      column.trailingAnchor.constraint(equalTo: view.trailingAnchor, constant: -16),
    ])
  }

  private func button(_ title: String, _ act: @escaping @MainActor (HomeViewController) -> Void) -> UIButton {
    let action = UIAction(title: title) { [weak self] _ in
      if let self {
        self.message.text = nil
        act(self)
      }
    }
    return UIButton(type: .system, primaryAction: action)
  }
}
