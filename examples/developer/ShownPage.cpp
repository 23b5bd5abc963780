#include "examples/developer/ShownPage.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "examples/developer/observing/Json.h"

namespace zelvora::developer {

namespace {

constexpr unsigned firstFailure = 400;

unsigned statusOf(WebKitWebView* engine)
{
    auto* const resource = webkit_web_view_get_main_resource(engine);
    auto* const response = resource ? webkit_web_resource_get_response(resource) : nullptr;
    return response ? webkit_uri_response_get_status_code(response) : 0;
}

}

ShownPage::Result ShownPage::load(std::string const& address, double seconds)
{
    webkit_web_view_load_uri(m_engine.get(), address.c_str());
    return waitUntilLoaded(seconds);
}

ShownPage::Result ShownPage::reload(double seconds)
{
    webkit_web_view_reload(m_engine.get());
    return waitUntilLoaded(seconds);
}

ShownPage::Result ShownPage::waitUntilLoaded(double seconds)
{
    auto const isLoaded = [this] {
        return webkit_web_view_get_uri(m_engine.get()) && !webkit_web_view_is_loading(m_engine.get());
    };
    if (!gtk::runMainLoopUntil(isLoaded, seconds))
        return std::unexpected("the page is not complete yet");
    if (auto const status = statusOf(m_engine.get()); status >= firstFailure)
        return std::unexpected(
            std::string(webkit_web_view_get_uri(m_engine.get())) + " is answered with " + std::to_string(status));
    return {};
}

ShownPage::Result ShownPage::run(std::string const& script)
{
    auto const error =
        m_page.evaluate("(() => { try {\n" + script + "\nreturn null; } catch (error) { return String(error); } })()");
    if (!error)
        return std::unexpected("this is no script that the page can run");
    auto const text = Json::parse(*error, nullptr, false);
    if (text.is_string())
        return std::unexpected(text.get<std::string>());
    return {};
}

bool ShownPage::waitUntilTrue(std::string const& expression, double seconds)
{
    return m_page.waitFor(expression, seconds);
}

}
