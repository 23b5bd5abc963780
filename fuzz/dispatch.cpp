// Any message of a page is carried out or dropped: it stops nothing, and what it stored can be read back.

#include "ZelvoraAdapters/memory/WebKit/WebView.h"
#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "fuzz/FuzzPlatform.h"
#include "fuzz/require.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

using namespace zelvora;

namespace {

// Text that begins with '[' or '{' is JSON; other bytes are an encoded value, which may contain what JSON cannot.
std::optional<platform::Value> message(std::string_view bytes)
{
    if (bytes.starts_with('[') || bytes.starts_with('{')) {
        auto value = shared::JSONSerialization().jsonObject({ std::string(bytes) });
        return value ? std::optional(*std::move(value)) : std::nullopt;
    }
    shared::ByteReader in { bytes };
    return shared::readValue(in);
}

fuzz::FuzzPlatform& preparedPlatform()
{
    static auto& s_platform = [] -> fuzz::FuzzPlatform& {
        auto& platform = fuzz::FuzzPlatform::shared();
        ZelvoraSDK::shared().addCustomAction("share", [](std::optional<std::string> const&) { });
        return platform;
    }();
    return s_platform;
}

}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    auto& platform = preparedPlatform();
    auto const body = message({ reinterpret_cast<char const*>(bytes), size });
    if (!body)
        return -1;
    auto const webView = std::make_shared<memory::WebView>(
        platform.memory().screen(), platform.mainQueue(), platform::CGRect {}, platform::WKWebViewConfiguration {});
    ZelvoraJavascriptInterface::handle({ ZelvoraJavascriptInterface::handlerName, *body }, webView, nullptr);
    auto const queued = ZelvoraStorage::getEventTrackingData();
    platform.runUntilIdle();
    fuzz::require(webView->evaluated().size() % 2 == 0, "an alert comes before each answer");
    fuzz::require(queued.size() <= 1, "a message saves one event at most");
    platform.reset();
    return 0;
}
