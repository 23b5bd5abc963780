#pragma once

#include "ZelvoraPlatform/Export.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"

namespace zelvora::shared {

/// JSON for adapters whose system has none: strict RFC 8259 in UTF-8. The members of a dictionary are written in the
/// order of its keys. If a key repeats in a text, the last member wins. Any thread.
class ZELVORA_API JSONSerialization final : public platform::JSONSerialization {
public:
    // platform::JSONSerialization
    [[nodiscard]] bool isValidJSONObject(platform::Value const& value) const override;
    [[nodiscard]] std::expected<platform::Data, platform::Error> data(
        platform::Value const& jsonObject, platform::JSONWritingOptions options) const override;
    [[nodiscard]] std::expected<platform::Value, platform::Error> jsonObject(platform::Data const& data) const override;
};

}
