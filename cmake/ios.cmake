# Toolchain: the phone's framework, on a Mac with Xcode. ZELVORA_SDK is iphoneos, as by default, or iphonesimulator.
# scripts/xcframework.sh uses it; it was not run where this was written.

set(CMAKE_SYSTEM_NAME iOS)
set(ZELVORA_SDK "iphoneos" CACHE STRING "iphoneos or iphonesimulator")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZELVORA_SDK)
set(CMAKE_OSX_SYSROOT "${ZELVORA_SDK}")
set(CMAKE_OSX_DEPLOYMENT_TARGET 26.2)
if(ZELVORA_SDK STREQUAL "iphonesimulator")
    set(CMAKE_OSX_ARCHITECTURES "arm64;x86_64")
else()
    set(CMAKE_OSX_ARCHITECTURES arm64)
endif()
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
