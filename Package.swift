// swift-tools-version: 6.0

// The SDK as a Swift package: C++, Objective-C++ and Swift, a target each, as a target holds one language. Hosts depend on
// the product and write `import ZelvoraIOS`.

import PackageDescription

let package = Package(
  name: "ZelvoraIOS",
  platforms: [.iOS("26.2")],
  products: [
    .library(name: "ZelvoraIOS", targets: ["ZelvoraIOS"])
  ],
  targets: [
    .target(
      name: "ZelvoraCore",
      path: ".",
      exclude: [
        "ZelvoraPlatform/CMakeLists.txt",
        "ZelvoraIOS/CMakeLists.txt",
        "ZelvoraIOS/ZelvoraSDK/internal/defaultAddresses.h.in",
      ],
      sources: ["ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters/shared/Foundation"],
      // The addresses of the service; cmake/ZelvoraPackage.cmake writes them.
      publicHeadersPath: "module/Package/include",
      cxxSettings: [.headerSearchPath(".")]
    ),
    .target(
      name: "ZelvoraObjC",
      dependencies: ["ZelvoraCore"],
      path: ".",
      exclude: ["ZelvoraAdapters/uikit/CMakeLists.txt", "module/ObjectiveC/module.modulemap"],
      sources: ["ZelvoraAdapters/uikit", "module/ObjectiveC"],
      publicHeadersPath: "module/ObjectiveC",
      cxxSettings: [.headerSearchPath(".")],
      linkerSettings: [
        .linkedFramework("UIKit"),
        .linkedFramework("WebKit"),
        .linkedFramework("AdSupport"),
        .linkedFramework("AppTrackingTransparency"),
      ]
    ),
    .target(
      name: "ZelvoraIOS",
      dependencies: ["ZelvoraObjC"],
      path: "module",
      sources: ["Swift"],
      resources: [.copy("Package/PrivacyInfo.xcprivacy")]
    ),
  ],
  swiftLanguageModes: [.v6],
  cxxLanguageStandard: .cxx2b
)
