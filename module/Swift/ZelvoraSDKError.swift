import Foundation

/// The severity of an error. The SDK's own errors are of type `error`, except `adIdNotInitialized`, which is a
/// `warning`. `info` and `debug` are for the host's own use.
@frozen public enum ZelvoraSDKErrorType: String, Sendable {
  case error = "ERROR"
  case warning = "WARNING"
  case info = "INFO"
  case debug = "DEBUG"
}

/// What a public operation reports when it fails. The details are in English.
@frozen public enum ZelvoraSDKError: LocalizedError, Equatable, Sendable {
  /// Not reported by the SDK, which reports a failure of the network as `internalApiError`.
  case networkError(String?)
  /// The lookup of the shop id failed.
  case internalApiError(String?)
  case otherError(String?)
  case shopIdNotInitialized
  case mediaKeyNotInitialized
  case userKeyNotInitialized
  /// Not reported by the SDK, which works without an advertising id.
  case adIdNotInitialized
  case initializing

  /// A fixed code for each case, such as "E100" or "W001", for the host to compare with.
  public var code: String {
    text(under: __ZelvoraSDKErrorCodeKey)
  }

  public var errorType: ZelvoraSDKErrorType {
    ZelvoraSDKErrorType(rawValue: text(under: __ZelvoraSDKErrorTypeKey)) ?? .error
  }

  /// A Korean text for the user, followed by the detail if there is one. Never nil.
  public var errorDescription: String? {
    bridged.localizedDescription
  }
}

// The codes and texts have one source, beneath the Objective-C half: the cases ask for them.
extension ZelvoraSDKError {
  init(bridging error: any Error) {
    let bridged = error as NSError
    let detail = bridged.userInfo[__ZelvoraSDKErrorDetailKey] as? String
    guard bridged.domain == __ZelvoraSDKErrorDomain else {
      self = .otherError(bridged.localizedDescription)
      return
    }
    switch __ZelvoraSDKError.Code(rawValue: bridged.code) {
    case .networkError: self = .networkError(detail)
    case .internalApiError: self = .internalApiError(detail)
    case .shopIdNotInitialized: self = .shopIdNotInitialized
    case .mediaKeyNotInitialized: self = .mediaKeyNotInitialized
    case .userKeyNotInitialized: self = .userKeyNotInitialized
    case .adIdNotInitialized: self = .adIdNotInitialized
    case .initializing: self = .initializing
    default: self = .otherError(detail)
    }
  }

  private var bridged: NSError {
    switch self {
    case .networkError(let detail): __ZelvoraSDKErrorMake(.networkError, detail) as NSError
    case .internalApiError(let detail): __ZelvoraSDKErrorMake(.internalApiError, detail) as NSError
    case .otherError(let detail): __ZelvoraSDKErrorMake(.otherError, detail) as NSError
    case .shopIdNotInitialized: __ZelvoraSDKErrorMake(.shopIdNotInitialized, nil) as NSError
    case .mediaKeyNotInitialized: __ZelvoraSDKErrorMake(.mediaKeyNotInitialized, nil) as NSError
    case .userKeyNotInitialized: __ZelvoraSDKErrorMake(.userKeyNotInitialized, nil) as NSError
    case .adIdNotInitialized: __ZelvoraSDKErrorMake(.adIdNotInitialized, nil) as NSError
    case .initializing: __ZelvoraSDKErrorMake(.initializing, nil) as NSError
    }
  }

  private func text(under key: String) -> String {
    bridged.userInfo[key] as? String ?? ""
  }
}
