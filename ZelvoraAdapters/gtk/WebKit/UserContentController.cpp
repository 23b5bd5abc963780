#include "ZelvoraAdapters/gtk/WebKit/UserContentController.h"

#include "ZelvoraAdapters/gtk/WebKit/ScriptValue.h"
#include "ZelvoraPlatform/fatalError.h"

#include <utility>

namespace zelvora::gtk {

UserContentController::UserContentController() : m_manager(adopt(webkit_user_content_manager_new())) { }

UserContentController::UserContentController(GObjectPointer<WebKitWebView> viewAhead)
    : m_manager(retain(webkit_web_view_get_user_content_manager(viewAhead.get())))
    , m_viewAhead(std::move(viewAhead))
{
}

UserContentController::~UserContentController()
{
    while (!m_connections.empty())
        removeScriptMessageHandler(std::string(m_connections.begin()->first));
}

void UserContentController::addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name)
{
    if (m_connections.contains(name))
        platform::fatalError("a script message handler of this name was added already");
    // Connected before registering, so that no message is lost.
    m_connections[name] = g_signal_connect_data(
        m_manager.get(), ("script-message-received::" + name).c_str(),
        G_CALLBACK(+[](WebKitUserContentManager*, JSCValue* body, Registration* registration) {
            registration->controller.receive(*registration, body);
        }),
        new Registration { *this, name, handler },
        [](gpointer registration, GClosure*) { delete static_cast<Registration*>(registration); },
        static_cast<GConnectFlags>(0));
    webkit_user_content_manager_register_script_message_handler(m_manager.get(), name.c_str(), nullptr);
}

void UserContentController::removeScriptMessageHandler(std::string const& name)
{
    auto const found = m_connections.find(name);
    if (found == m_connections.end())
        return;
    webkit_user_content_manager_unregister_script_message_handler(m_manager.get(), name.c_str(), nullptr);
    g_signal_handler_disconnect(m_manager.get(), found->second);
    m_connections.erase(found);
}

void UserContentController::addUserScript(platform::WKUserScript script)
{
    auto const frames =
        script.forMainFrameOnly ? WEBKIT_USER_CONTENT_INJECT_TOP_FRAME : WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES;
    auto const time = script.injectionTime == platform::WKUserScriptInjectionTime::AtDocumentStart
        ? WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START
        : WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END;
    std::unique_ptr<WebKitUserScript, Releasing<webkit_user_script_unref>> const made(
        webkit_user_script_new(script.source.c_str(), frames, time, nullptr, nullptr));
    webkit_user_content_manager_add_script(m_manager.get(), made.get());
}

void UserContentController::receive(Registration const& registration, JSCValue* body)
{
    auto value = toValue(body);
    if (!value) {
        g_log("Zelvora", G_LOG_LEVEL_WARNING, "A message to %s was dropped: %s", registration.name.c_str(),
            value.error().c_str());
        return;
    }
    registration.handler.didReceiveScriptMessage({ registration.name, *std::move(value) });
}

}
