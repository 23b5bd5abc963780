#pragma once

#include "ZelvoraPlatform/Foundation/URL.h"

#include <string>

namespace zelvora::tests {

// Scripts with which a harness does in a real engine what a page or its user does.

/// Clicks a link as the user would: a navigation by script alone replaces the current entry of the history.
inline std::string clickOnLinkTo(platform::URL const& url)
{
    return "{ const link = document.body.appendChild(document.createElement('a')); link.href = '" + url.absoluteString()
        + "'; link.click(); }";
}

inline std::string additionOfFrame(platform::URL const& url)
{
    return "document.body.appendChild(document.createElement('iframe')).src = '" + url.absoluteString() + "';";
}

inline std::string postOf(std::string const& expression, std::string const& handler)
{
    return "window.webkit.messageHandlers." + handler + ".postMessage(" + expression + ");";
}

}
