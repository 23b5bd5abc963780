#include "examples/service/Identity.h"

#include "examples/service/Json.h"
#include "examples/service/ShopDirectory.h"

#include <algorithm>
#include <array>

namespace zelvora::examples {

namespace {

bool isIdentity(nlohmann::json const& json)
{
    static constexpr std::array<char const*, 4> s_members { "userKey", "apiKey", "adId", "packageName" };
    return json.is_object() && std::ranges::all_of(s_members, [&json](char const* member) {
        auto const value = json.find(member);
        return value != json.end() && (value->is_string() || value->is_null());
    });
}

} // namespace

Identity::Identity(ShopDirectory const& shops) : m_shops(shops) { }

Reply Identity::answer(Request const& request)
{
    if (request.path != "/")
        return errorReply(404, "the identity endpoint lives at /");
    if (request.method != "POST")
        return methodNotAllowed("POST");
    if (!isJson(request))
        return errorReply(415, "the body must be application/json");

    auto const json = parseJson(request.body);
    if (!json || !isIdentity(*json))
        return errorReply(400, "the body must hold userKey, apiKey, adId and packageName, each a text or null");

    auto const& apiKey = json->at("apiKey");
    auto const shop = apiKey.is_string() ? m_shops.shopOfKey(apiKey.get<std::string>()) : std::nullopt;
    if (!shop)
        return errorReply(404, "unknown apiKey");
    return jsonReply(200, { { "shop_id", shop->shopId } });
}

} // namespace zelvora::examples
