import ZelvoraIOS

// rejected: non-class type 'Delegate' cannot conform to class protocol
struct Delegate: ZelvoraSDK.ZelvoraSDKDelegate {
  func zelvoraSDKShouldHandleBackAction(_ webView: ZelvoraWebView) -> Bool { true }
  func zelvoraSDKWillDismiss() {}
}
