#pragma once

#include "ZelvoraPlatform/Foundation/Error.h"

#include <string>
#include <utility>

namespace zelvora::shared {

[[nodiscard]] inline platform::Error jsonError(std::string description)
{
    return { "JSONSerialization", 1, std::move(description) };
}

}
