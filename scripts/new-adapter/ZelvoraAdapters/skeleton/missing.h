#pragma once

#include "ZelvoraPlatform/fatalError.h"

#include <string>

namespace zelvora::skeleton {

/// Stops the process with the name of a method that is still to be written.
[[noreturn]] inline void missing(std::string const& method)
{
    platform::fatalError("the adapter skeleton has no " + method + " yet");
}

}
