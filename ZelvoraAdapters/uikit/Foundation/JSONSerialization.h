#pragma once

#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

namespace zelvora::uikit {

/// The system's reader and writer. They never get input at which they would raise an exception or run out of stack
/// instead of returning an error.
class JSONSerialization final : public platform::JSONSerialization {
public:
    // platform::JSONSerialization
    [[nodiscard]] bool isValidJSONObject(platform::Value const& value) const override;
    [[nodiscard]] std::expected<platform::Data, platform::Error> data(
        platform::Value const& jsonObject, platform::JSONWritingOptions options) const override;
    [[nodiscard]] std::expected<platform::Value, platform::Error> jsonObject(platform::Data const& data) const override;
};

}
