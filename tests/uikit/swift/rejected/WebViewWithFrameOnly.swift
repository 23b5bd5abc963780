import UIKit
import ZelvoraIOS

// rejected: 'init(frame:)' is unavailable
@MainActor func make() { _ = ZelvoraWebView(frame: CGRect()) }
