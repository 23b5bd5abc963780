#pragma once

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/WebKit/WKUserContentController.h"

#include <webkit/webkit.h>

#include <map>
#include <string>
#include <utility>

namespace zelvora::gtk {

/// The engine's user content manager, whose script messages work like the phone's.
class UserContentController final : public platform::WKUserContentController {
public:
    UserContentController();
    /// The manager of a view that was made ahead. The view goes with this object unless a web view takes it.
    explicit UserContentController(GObjectPointer<WebKitWebView> viewAhead);
    UserContentController(UserContentController const&) = delete;
    UserContentController& operator=(UserContentController const&) = delete;
    ~UserContentController() override;

    [[nodiscard]] WebKitUserContentManager* manager() const { return m_manager.get(); }
    /// Once at most; null if there is none.
    [[nodiscard]] GObjectPointer<WebKitWebView> takeViewAhead() { return std::move(m_viewAhead); }

    // platform::WKUserContentController
    void addScriptMessageHandler(platform::WKScriptMessageHandler& handler, std::string const& name) override;
    void removeScriptMessageHandler(std::string const& name) override;
    void addUserScript(platform::WKUserScript script) override;

private:
    struct Registration {
        UserContentController& controller;
        std::string name;
        platform::WKScriptMessageHandler& handler;
    };

    void receive(Registration const& registration, JSCValue* body);

    GObjectPointer<WebKitUserContentManager> m_manager;
    GObjectPointer<WebKitWebView> m_viewAhead;
    // Signal connections by handler name.
    std::map<std::string, gulong> m_connections;
};

}
