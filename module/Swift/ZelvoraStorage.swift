import Foundation

extension ZelvoraStorage {
  /// Stores a property-list value (text, number, boolean, date, data, and arrays and string-keyed dictionaries of these,
  /// in which `NSNull` may stand as well), or removes what is stored if the value is nil. `expireSec` is the lifetime in
  /// seconds; without one, the value never expires, even if an earlier value under the key had a lifetime. Any other
  /// value, `NSNull` itself, and one that nests deeper than 512 levels, logs one error line and changes nothing.
  public static func set(_ value: Any?, forKey key: String, expireSec: Double? = nil) {
    __set(value, forKey: key, expireSec: expireSec.map { NSNumber(value: $0) })
  }
}
