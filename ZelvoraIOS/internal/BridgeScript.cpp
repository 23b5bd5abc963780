#include "ZelvoraIOS/internal/BridgeScript.h"

#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/SDKCore.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace zelvora::internal {

namespace {

// The script's fixed text. The handler name goes after each of the first seven pieces, the names of the custom actions
// after the eighth and the handler name after the ninth. Pages depend on every byte, blanks at line ends included.
constexpr std::array<std::string_view, 10> pieces {
    "window.ZelvoraSDKBridge = {\n"
    "    close: function() {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'close' });\n"
    "    },\n"
    "    setItem: function(key, value, expireSec) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ \n"
    "            action: 'setItem', \n"
    "            key: key, \n"
    "            value: value, \n"
    "            expire: expireSec \n"
    "        });\n"
    "    },\n"
    "    getItem: function(key, callbackName) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'getItem', key: key, callback: callbackName });\n"
    "    },\n"
    "    removeItem: function(key) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'removeItem', key: key });\n"
    "    },\n"
    "    saveEvent: function(data) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'saveEvent', data: data });\n"
    "    },\n"
    "    getEvents: function(callbackName) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'getEvents', callback: callbackName });\n"
    "    },\n"
    "    setFooterVisible: function(visible) {\n"
    "        window.webkit.messageHandlers.",
    ".postMessage({ action: 'setFooterVisible', visible: visible });\n"
    "    }\n"
    "};\n"
    "\n"
    "var customKeys = ",
    ";\n"
    "customKeys.forEach(function(key) {\n"
    "    if (key) {\n"
    "        window.ZelvoraSDKBridge[key] = function(data) {\n"
    "            var arg = (typeof data === 'object') ? JSON.stringify(data) : data;\n"
    "            window.webkit.messageHandlers.",
    ".postMessage({ action: 'invokeCustomAction', name: key, data: arg || null });\n"
    "        };\n"
    "    }\n"
    "});",
};

consteval std::size_t fixedLength()
{
    std::size_t length = 0;
    for (auto const piece : pieces)
        length += piece.size();
    return length;
}

constexpr std::size_t scriptLength = 1426;
static_assert(fixedLength() == scriptLength);

std::string customKeys()
{
    auto const written = platform::Platform::current().jsonSerialization().data(
        SDKCore::shared().customActions.names(), platform::JSONWritingOptions::None);
    if (!written)
        return "[]";
    return platform::decodeUTF8(written->bytes).value_or("[]");
}

}

std::string bridgeScriptSource()
{
    constexpr std::string_view handlerName = ZelvoraJavascriptInterface::handlerName;
    constexpr std::size_t customKeysPlace = 7;
    auto const keys = customKeys();
    std::string script;
    script.reserve(scriptLength + keys.size() + (pieces.size() * handlerName.size()));
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        script += pieces.at(i);
        if (i + 1 == pieces.size())
            break;
        if (i == customKeysPlace)
            script += keys;
        else
            script += handlerName;
    }
    return script;
}

platform::WKUserScript bridgeScript()
{
    return {
        .source = bridgeScriptSource(),
        .injectionTime = platform::WKUserScriptInjectionTime::AtDocumentStart,
        .forMainFrameOnly = false,
    };
}

}
