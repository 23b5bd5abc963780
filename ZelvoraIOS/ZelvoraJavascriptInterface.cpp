#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/NumberText.h"
#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "ZelvoraPlatform/Platform.h"

#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace zelvora {

namespace {

using platform::Dictionary;
using platform::Platform;
using platform::Value;

std::optional<std::string> text(Dictionary const& map, std::string_view key)
{
    auto const* value = map.find(key);
    auto const* held = value ? value->text() : nullptr;
    return held ? std::optional(*held) : std::nullopt;
}

std::optional<std::string> writtenAsJSON(Value const& jsonObject)
{
    auto const written = Platform::current().jsonSerialization().data(jsonObject, platform::JSONWritingOptions::None);
    return written ? platform::decodeUTF8(written->bytes) : std::nullopt;
}

std::string stringLiteral(std::string const& string)
{
    // The writer takes no bare text, so it goes as the only element of an array, whose brackets are dropped again.
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
        return platform::numberText(*number);
    return "null";
}

}

// One message with what its actions need.
class MessageDispatch final {
public:
    MessageDispatch(Dictionary const& message, std::shared_ptr<platform::WKWebView> const& webView,
        std::shared_ptr<platform::UIViewController> const& viewController)
        : m_message(message)
        , m_webView(webView)
        , m_viewController(viewController)
    {
    }

    void run(std::string const& action) const
    {
        using Operation = void (MessageDispatch::*)() const;
        static constexpr std::array<std::pair<std::string_view, Operation>, 8> operations { {
            { "close", &MessageDispatch::close },
            { "setItem", &MessageDispatch::setItem },
            { "getItem", &MessageDispatch::getItem },
            { "removeItem", &MessageDispatch::removeItem },
            { "saveEvent", &MessageDispatch::saveEvent },
            { "getEvents", &MessageDispatch::getEvents },
            { "setFooterVisible", &MessageDispatch::setFooterVisible },
            { "invokeCustomAction", &MessageDispatch::invokeCustomAction },
        } };
        for (auto const& [name, operation] : operations) {
            if (name == action)
                return (this->*operation)();
        }
        ZelvoraLogger::w("Unknown JS action: " + action);
    }

private:
    void close() const
    {
        Platform::current().mainQueue().async([viewController = m_viewController] {
            ZelvoraSDK::shared().sendTrackingData();
            if (viewController)
                viewController->dismiss(platform::Animated::Yes);
        });
    }

    void setItem() const
    {
        auto const key = text(m_message, "key");
        if (!key)
            return;
        auto const* value = m_message.find("value");
        if (!value)
            return;
        auto const* expire = m_message.find("expire");
        ZelvoraStorage::set(*value, *key, expire ? expire->number() : std::nullopt);
    }

    void getItem() const
    {
        auto const key = text(m_message, "key");
        auto const callback = text(m_message, "callback");
        if (key && callback)
            ZelvoraJavascriptInterface::sendCallback(m_webView, *callback, ZelvoraStorage::get(*key));
    }

    void removeItem() const
    {
        if (auto const key = text(m_message, "key"))
            ZelvoraStorage::remove(*key);
    }

    void saveEvent() const
    {
        auto const* data = m_message.find("data");
        if (auto const* event = data ? data->dictionary() : nullptr)
            ZelvoraStorage::saveEventTrackingData(*event);
    }

    void getEvents() const
    {
        if (auto const callback = text(m_message, "callback"))
            ZelvoraJavascriptInterface::sendCallback(m_webView, *callback, ZelvoraStorage::getEventTrackingData());
    }

    void setFooterVisible() const
    {
        auto const* argument = m_message.find("visible");
        if (auto const visible = argument ? argument->boolean() : std::nullopt)
            ZelvoraSDK::shared().setFooterVisible(*visible);
    }

    void invokeCustomAction() const
    {
        auto const name = text(m_message, "name");
        if (!name)
            return;
        auto const data = text(m_message, "data");
        ZelvoraLogger::d("invokeCustomAction(name=" + *name + ", data=" + data.value_or("null") + ") called");
        auto const actions = ZelvoraSDK::shared().getCustomActions();
        if (auto const found = actions.find(*name); found != actions.end() && found->second)
            found->second(data);
    }

    Dictionary const& m_message;
    std::shared_ptr<platform::WKWebView> const& m_webView;
    std::shared_ptr<platform::UIViewController> const& m_viewController;
};

void ZelvoraJavascriptInterface::handle(platform::WKScriptMessage const& message,
    std::shared_ptr<platform::WKWebView> const& webView,
    std::shared_ptr<platform::UIViewController> const& viewController)
{
    if (message.name != handlerName)
        return;
    ZelvoraLogger::d("JS Message Received: " + debugDescription(message.body));
    auto const* map = message.body.dictionary();
    if (!map)
        return;
    if (auto const action = text(*map, "action"))
        MessageDispatch(*map, webView, viewController).run(*action);
}

void ZelvoraJavascriptInterface::sendCallback(
    std::shared_ptr<platform::WKWebView> const& webView, std::string const& callback, std::optional<Value> const& value)
{
    auto encoded = encodedForJavaScript(value);
    auto script = callback + "(" + encoded + ");";
    ZelvoraLogger::d("Send callback data: " + encoded);
    Platform::current().mainQueue().async([webView, encoded = std::move(encoded), script = std::move(script)] {
        if (!webView)
            return;
        // Pages rely on the alert before every answer; the web view completes it without a panel.
        webView->evaluateJavaScript("javascript:alert('" + encoded + "');");
        webView->evaluateJavaScript(script);
    });
}

}
