#pragma once

#include "ZelvoraPlatform/Foundation/Data.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/Value.h"

#include <expected>

namespace zelvora::shared {

/// See `platform::JSONSerialization::jsonObject`. Any thread.
[[nodiscard]] std::expected<platform::Value, platform::Error> readJSON(platform::Data const& data);

}
