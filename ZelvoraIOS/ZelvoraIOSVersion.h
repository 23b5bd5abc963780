#pragma once

// With C names, so that they are what a framework of the phone exports.
extern "C" {
/// 1.0
extern double const
    ZelvoraIOSVersionNumber; // NOLINT(readability-identifier-naming): the name a framework's version has
extern char const ZelvoraIOSVersionString[]; // NOLINT
}
