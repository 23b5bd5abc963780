#include "ZelvoraAdapters/shared/JSON/JSONSerialization.h"

#include "ZelvoraAdapters/shared/JSON/internal/JSONReader.h"
#include "ZelvoraAdapters/shared/JSON/internal/JSONWriter.h"

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
