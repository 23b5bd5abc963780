#pragma once

#include "platform/Foundation/Data.h"
#include "platform/Foundation/Error.h"
#include "platform/Foundation/Value.h"

#include <expected>

namespace zelvora::shared {

/// See `platform::JSONSerialization::jsonObject`. Any thread.
[[nodiscard]] std::expected<platform::Value, platform::Error> readJSON(platform::Data const& data);

}
