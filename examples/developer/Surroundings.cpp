#include "examples/developer/Surroundings.h"

#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/service/Faults.h"

#include <adwaita.h>

#include <array>
#include <chrono>
#include <memory>

namespace zelvora::developer {

namespace {

using examples::Fault;
using examples::Target;

constexpr std::chrono::milliseconds slowness { 2000 };
constexpr unsigned refusal = 503;

Fault faultOf(Switches const& switches, Target target)
{
    Fault fault;
    if (switches.network == NetworkState::Slow)
        fault.delay = slowness;
    if (switches.service == ServiceState::Refuses && target == Target::Collector)
        fault.status = refusal;
    return fault;
}

}

void Surroundings::apply(Switches const& switches) const
{
    for (auto const target : { Target::Lookup, Target::Collector, Target::Site })
        m_service.faults().set(target, faultOf(switches, target));
    m_platform.setOffline(switches.network == NetworkState::Off);
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(),
        switches.look == Look::Dark ? ADW_COLOR_SCHEME_FORCE_DARK : ADW_COLOR_SCHEME_FORCE_LIGHT);
    std::array const languages { switches.language == Language::Korean ? "ko-KR" : "en-US",
        static_cast<char const*>(nullptr) };
    webkit_web_context_set_preferred_languages(webkit_web_context_get_default(), languages.data());
}

void Surroundings::apply(Switches const& switches, WebKitWebView* engine)
{
    auto* const session = webkit_web_view_get_network_session(engine);
    if (switches.network != NetworkState::Off) {
        webkit_network_session_set_proxy_settings(session, WEBKIT_NETWORK_PROXY_MODE_DEFAULT, nullptr);
        return;
    }
    // Nobody listens at this port, so that nothing is reached, whatever address a page asks for.
    using Settings = std::unique_ptr<WebKitNetworkProxySettings, gtk::Releasing<webkit_network_proxy_settings_free>>;
    Settings const nowhere(webkit_network_proxy_settings_new("http://127.0.0.1:1/", nullptr));
    webkit_network_session_set_proxy_settings(session, WEBKIT_NETWORK_PROXY_MODE_CUSTOM, nowhere.get());
}

}
