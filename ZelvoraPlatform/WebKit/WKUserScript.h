#pragma once

#include <cstdint>
#include <string>

namespace zelvora::platform {

/// With the phone's raw values.
enum class WKUserScriptInjectionTime : std::uint8_t { AtDocumentStart = 0, AtDocumentEnd = 1 };

/// A script that runs in every page, as if it were one of the page's own.
struct WKUserScript {
    /// JavaScript.
    std::string source;
    /// Before any script of the page, or once the page's document is read.
    WKUserScriptInjectionTime injectionTime = WKUserScriptInjectionTime::AtDocumentStart;
    /// If false, it runs in the frames of the page as well.
    bool forMainFrameOnly = false;

    bool operator==(WKUserScript const&) const = default;
};

}
