#include "adapters/shared/JSONSerialization.h"

#include "adapters/shared/JSONReader.h"
#include "adapters/shared/JSONWriter.h"

namespace zelvora::shared {

bool JSONSerialization::isValidJSONObject(platform::Value const& value) const
{
    return isWritableAsJSON(value);
}

std::expected<platform::Data, platform::Error> JSONSerialization::data(
    platform::Value const& jsonObject, platform::JSONWritingOptions options) const
{
    return writeJSON(jsonObject, options);
}

std::expected<platform::Value, platform::Error> JSONSerialization::jsonObject(platform::Data const& data) const
{
    return readJSON(data);
}

}
