import ZelvoraIOS

// rejected: cannot inherit from non-open class 'ZelvoraWebView' outside of its defining module
final class Derived: ZelvoraWebView {}
