#include "ZelvoraIOS/internal/MessageDispatch.h"

#include "ZelvoraIOS/ZelvoraLogger.h"
#include "ZelvoraIOS/ZelvoraSDK/internal/SDKCore.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraIOS/internal/PageCallback.h"
#include "ZelvoraPlatform/Platform.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace zelvora::internal {

using platform::Dictionary;
using platform::Platform;

namespace {

std::optional<std::string> text(Dictionary const& map, std::string_view key)
{
    auto const* value = map.find(key);
    auto const* text = value ? value->text() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

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
            sendCallback(m_webView, *callback, ZelvoraStorage::get(*key));
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
            sendCallback(m_webView, *callback, ZelvoraStorage::getEventTrackingData());
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
        if (auto const action = SDKCore::shared().customActions.find(*name))
            action(data);
    }

    Dictionary const& m_message;
    std::shared_ptr<platform::WKWebView> const& m_webView;
    std::shared_ptr<platform::UIViewController> const& m_viewController;
};

}

void dispatchMessage(std::string const& action, Dictionary const& message,
    std::shared_ptr<platform::WKWebView> const& webView,
    std::shared_ptr<platform::UIViewController> const& viewController)
{
    MessageDispatch(message, webView, viewController).run(action);
}

}
