#pragma once

#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

namespace zelvora::shared {

/// See `platform::JSONSerialization::isValidJSONObject`. Any thread.
[[nodiscard]] bool isWritableAsJSON(platform::Value const& value);
/// See `platform::JSONSerialization::data`. Any thread.
[[nodiscard]] std::expected<platform::Data, platform::Error> writeJSON(
    platform::Value const& jsonObject, platform::JSONWritingOptions options);

}
