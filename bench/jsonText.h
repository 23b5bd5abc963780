#pragma once

#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"

#include <string>
#include <utility>

namespace zelvora::bench {

/// An array or a dictionary as JSON text.
[[nodiscard]] inline std::string toText(platform::Value const& value)
{
    return shared::JSONSerialization().data(value, platform::JSONWritingOptions::None).value().bytes;
}

/// The array or the dictionary that the text is.
[[nodiscard]] inline platform::Value fromText(std::string text)
{
    return shared::JSONSerialization().jsonObject({ std::move(text) }).value();
}

}
