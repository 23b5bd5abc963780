#include "ZelvoraAdapters/gtk/WebKit/ViewAhead.h"

namespace zelvora::gtk {

GObjectPointer<WebKitWebView> makeEngineView(WebKitUserContentManager* manager, WebsiteSession const& session)
{
    auto* const view = WEBKIT_WEB_VIEW(g_object_new(
        WEBKIT_TYPE_WEB_VIEW, "user-content-manager", manager, "network-session", session.session(), nullptr));
    return sink(view);
}

GObjectPointer<WebKitWebView> makeViewAhead(WebsiteSession const& session)
{
    auto const manager = adopt(webkit_user_content_manager_new());
    auto view = makeEngineView(manager.get(), session);
    // The engine starts the process with the first thing that the process has to do.
    webkit_web_view_evaluate_javascript(view.get(), "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
    return view;
}

}
