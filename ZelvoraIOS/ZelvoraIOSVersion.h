#pragma once

// C linkage, because these are the symbols that a framework exports on the phone.
extern "C" {
/// 1.0. May be read on any thread.
extern double const
    ZelvoraIOSVersionNumber; // NOLINT(readability-identifier-naming): the name a framework's version has
extern char const ZelvoraIOSVersionString[]; // NOLINT
}
