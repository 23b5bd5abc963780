import UIKit

/// The bar below the page. It reaches to the screen's edge, so its text keeps clear of the home indicator.
@MainActor
func makeShopFooter() -> UIView {
  let footer = UIView()
  footer.backgroundColor = .systemBackground
  let label = UILabel()
  label.text = "Returns are free for 30 days"
  label.translatesAutoresizingMaskIntoConstraints = false
  footer.addSubview(label)
  NSLayoutConstraint.activate([
    label.leadingAnchor.constraint(equalTo: footer.safeAreaLayoutGuide.leadingAnchor, constant: 16),
    label.topAnchor.constraint(equalTo: footer.topAnchor, constant: 12),
    label.bottomAnchor.constraint(equalTo: footer.safeAreaLayoutGuide.bottomAnchor, constant: -12),
  ])
  return footer
}
