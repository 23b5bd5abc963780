#pragma once

#include "ZelvoraAdapters/skeleton/missing.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

#include <expected>

namespace zelvora::skeleton {

/// `ZelvoraAdapters/shared` has one, based on nlohmann-json: `using JSONSerialization = shared::JSONSerialization;` is
/// all of it then.
class JSONSerialization final : public platform::JSONSerialization {
public:
    // platform::JSONSerialization
    [[nodiscard]] bool isValidJSONObject(platform::Value const&) const override
    {
        missing("JSONSerialization::isValidJSONObject");
    }
    [[nodiscard]] std::expected<platform::Data, platform::Error> data(
        platform::Value const&, platform::JSONWritingOptions) const override
    {
        missing("JSONSerialization::data");
    }
    [[nodiscard]] std::expected<platform::Value, platform::Error> jsonObject(platform::Data const&) const override
    {
        missing("JSONSerialization::jsonObject");
    }
};

}
