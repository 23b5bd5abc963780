import ZelvoraIOS

// rejected: 'init()' is unavailable
func make() { _ = ZelvoraSDK() }
