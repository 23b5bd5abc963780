#include "ZelvoraIOS/internal/PageCallback.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <cmath>
#include <utility>

namespace zelvora::internal {

using platform::Platform;
using platform::Value;

namespace {

std::optional<std::string> writtenAsJSON(Value const& jsonObject)
{
    auto const written = Platform::current().jsonSerialization().data(jsonObject, platform::JSONWritingOptions::None);
    return written ? platform::decodeUTF8(written->bytes) : std::nullopt;
}

std::string stringLiteral(std::string const& string)
{
    // The writer accepts containers only, so the text is written as the only element of an array, without the brackets.
    auto const written = writtenAsJSON(platform::Array { string });
    if (!written)
        return "'" + string + "'";
    return written->substr(1, written->size() - 2);
}

std::string encodedForJavaScript(std::optional<Value> const& value)
{
    if (!value)
        return "null";
    if (Platform::current().jsonSerialization().isValidJSONObject(*value))
        return writtenAsJSON(*value).value_or("null");
    if (auto const* string = value->text())
        return stringLiteral(*string);
    if (auto const boolean = value->boolean())
        return *boolean ? "true" : "false";
    if (auto const number = value->number(); number && std::isfinite(*number))
        return platform::numberText(*value);
    return "null";
}

}

void sendCallback(
    std::shared_ptr<platform::WKWebView> const& webView, std::string const& callback, std::optional<Value> const& value)
{
    auto encoded = encodedForJavaScript(value);
    auto script = callback + "(" + encoded + ");";
    ZelvoraLogger::d("Send callback data: " + encoded);
    Platform::current().mainQueue().async([webView, encoded = std::move(encoded), script = std::move(script)] {
        if (!webView)
            return;
        // Pages rely on the alert before every answer. It shows no panel, because the web view has no UI delegate.
        webView->evaluateJavaScript("javascript:alert('" + encoded + "');");
        webView->evaluateJavaScript(script);
    });
}

}
