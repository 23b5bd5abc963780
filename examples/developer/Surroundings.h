#pragma once

#include "examples/developer/observing/ObservedPlatform.h"
#include "examples/developer/script/Switches.h"
#include "examples/service/Service.h"

#include <webkit/webkit.h>

namespace zelvora::developer {

/// The service, the network and the system around the app, as the switches have them. Main thread.
class Surroundings final {
public:
    Surroundings(examples::Service& service, ObservedPlatform& platform) : m_service(service), m_platform(platform) { }

    /// Applies to what is done from now on. A page knows its language from its next load on.
    void apply(Switches const& switches) const;
    /// The engine's part: call it for each web view that is made.
    static void apply(Switches const& switches, WebKitWebView* engine);

private:
    examples::Service& m_service;
    ObservedPlatform& m_platform;
};

}
