import ZelvoraIOS

// rejected: call to main actor-isolated instance method 'createWebView()' in a synchronous nonisolated context
func make() { _ = ZelvoraSDK.shared.createWebView() }
