#pragma once

#include <cstdint>
#include <string>

namespace zelvora::platform {

/// With the phone's raw values.
enum class WKUserScriptInjectionTime : std::uint8_t { AtDocumentStart = 0, AtDocumentEnd = 1 };

struct WKUserScript {
    std::string source;
    WKUserScriptInjectionTime injectionTime = WKUserScriptInjectionTime::AtDocumentStart;
    bool forMainFrameOnly = false;

    bool operator==(WKUserScript const&) const = default;
};

}
