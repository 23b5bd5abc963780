#pragma once

#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/WebKit/WKUserScript.h"

#include <string>
#include <string_view>
#include <vector>

namespace zelvora::tests {

// What becomes, on a real page or server, of what a web view or a loader without one has recorded.

/// The argument of a script that is nothing but a call mark('...').
inline std::string markIn(std::string_view script)
{
    constexpr std::string_view before = "mark('";
    constexpr std::string_view after = "')";
    return std::string(script.substr(before.size(), script.size() - before.size() - after.size()));
}

/// The marks of user scripts in the order in which a page runs these, where they were added in this order.
inline std::vector<std::string> marksIn(std::vector<platform::WKUserScript> const& scripts)
{
    using Time = platform::WKUserScriptInjectionTime;
    std::vector<std::string> marks;
    for (auto const time : { Time::AtDocumentStart, Time::AtDocumentEnd }) {
        for (auto const& script : scripts) {
            if (script.injectionTime == time)
                marks.push_back(markIn(script.source));
        }
    }
    return marks;
}

/// The request as it reaches a server.
inline ReceivedRequest receivedRequest(platform::URLRequest const& request)
{
    ReceivedRequest received { .method = request.httpMethod, .headers = {}, .body = request.httpBody.bytes };
    for (auto const& [name, value] : request.httpHeaderFields)
        received.headers.emplace(lowerCase(name), value);
    return received;
}

}
