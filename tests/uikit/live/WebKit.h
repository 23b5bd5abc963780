#pragma once

#import <WebKit/WebKit.h>

#include <functional>
#include <string>

/// The phone's web view over a real engine. The classes are those of the double without one, which it replaces.
namespace zelvora::live {

/// Makes the page that is shown at an address, instead of a server.
void setPages(std::function<std::string(std::string const& url)> pages);

/// Runs the engines and the main queue until `done` returns true; false after half a minute.
bool runUntil(std::function<bool()> const& done);

}
