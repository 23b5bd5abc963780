#!/usr/bin/env bash
# scripts/xcframework.sh OUTPUT.xcframework [CMAKE ARGUMENT...]: on a Mac with Xcode 26.2 or later, CMake and Ninja, builds the
# framework for the phone and for the simulator, with the Swift overlay in it, and puts both into OUTPUT. Arguments such as
# -DZELVORA_ADDRESS_LOOKUP_ENDPOINT=... go to CMake. It signs nothing.
#
# This was written without a Mac and has never been run. What was checked elsewhere: the sources compile and link for both
# targets against our own declarations, and the overlay type-checks with these flags.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

(($# >= 1)) || { echo "usage: $0 OUTPUT.xcframework [CMAKE ARGUMENT...]" >&2; exit 2; }
[[ "$(uname -s)" == Darwin ]] || { echo "$0 needs a Mac with Xcode; on Linux: cmake --preset ios-gate" >&2; exit 2; }
output="$1"
shift

# build_core SDK ARGUMENT...: C++ and Objective-C++ as static libraries, and the framework's folder around them.
build_core() {
    local sdk="$1"
    shift
    cmake -S . -B "build/$sdk" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/ios.cmake" \
        -DZELVORA_SDK="$sdk" -DZELVORA_UIKIT=ON -DZELVORA_GTK=OFF -DZELVORA_EXAMPLES=OFF -DZELVORA_TESTS=OFF \
        -DZELVORA_INSTALL=OFF "$@"
    cmake --build "build/$sdk" --target zelvora_framework
}

# build_overlay SDK ARCHITECTURE TRIPLE: the Swift half, linked with the libraries into one image of the framework.
build_overlay() {
    local sdk="$1" architecture="$2" triple="$3"
    local build="build/$sdk" modules="build/$sdk/ZelvoraIOS.framework/Modules/ZelvoraIOS.swiftmodule"
    mkdir -p "$modules" "$build/$architecture"
    xcrun --sdk "$sdk" swiftc -O -swift-version 6 -parse-as-library -enable-library-evolution -module-name ZelvoraIOS \
        -import-underlying-module -F "$build" -target "$triple" -emit-library \
        -emit-module -emit-module-path "$modules/$triple.swiftmodule" \
        -emit-module-interface-path "$modules/$triple.swiftinterface" \
        -Xlinker -install_name -Xlinker @rpath/ZelvoraIOS.framework/ZelvoraIOS -Xlinker -dead_strip \
        -Xlinker -force_load -Xlinker "$build/module/libzelvora_module.a" \
        -Xlinker -force_load -Xlinker "$build/ZelvoraIOS/libZelvoraIOS.a" \
        "$build/ZelvoraAdapters/uikit/libzelvora_uikit.a" "$build/ZelvoraAdapters/shared/libzelvora_shared.a" \
        "$build/ZelvoraPlatform/libzelvora_platform.a" -lc++ -framework UIKit -framework WebKit -framework AdSupport \
        -weak_framework AppTrackingTransparency module/Swift/*.swift -o "$build/$architecture/ZelvoraIOS"
}

build_core iphoneos "$@"
build_overlay iphoneos arm64 arm64-apple-ios26.2
cp build/iphoneos/arm64/ZelvoraIOS build/iphoneos/ZelvoraIOS.framework/ZelvoraIOS

build_core iphonesimulator "$@"
build_overlay iphonesimulator arm64 arm64-apple-ios26.2-simulator
build_overlay iphonesimulator x86_64 x86_64-apple-ios26.2-simulator
lipo -create build/iphonesimulator/{arm64,x86_64}/ZelvoraIOS -output build/iphonesimulator/ZelvoraIOS.framework/ZelvoraIOS

rm -rf "$output"
xcodebuild -create-xcframework -framework build/iphoneos/ZelvoraIOS.framework \
    -framework build/iphonesimulator/ZelvoraIOS.framework -output "$output"
echo "Made $output. Sign it before you give it to hosts."
