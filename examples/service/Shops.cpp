#include "examples/service/Shops.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

constexpr std::array<Shop, 3> shops { {
    { .apiKey = "demo-key", .shopId = "hanok", .koreanName = "한옥상점", .englishName = "Hanok Store" },
    { .apiKey = "demo-key-harbor", .shopId = "harbor", .koreanName = "항구마켓", .englishName = "Harbor Market" },
    { .apiKey = "demo-key-garden", .shopId = "garden", .koreanName = "뜰가게", .englishName = "Garden Shop" },
} };

Shop const* findShop(std::string_view Shop::* member, std::string_view wanted)
{
    auto const* const found = std::ranges::find(shops, wanted, member);
    return found == shops.end() ? nullptr : found;
}

bool isQuestion(Json const& json)
{
    return json.is_object() && json.size() == 2 && json.contains("profile") && json.contains("api_key")
        && (json.at("profile") == "dev" || json.at("profile") == "prd") && json.at("api_key").is_string();
}

bool isIdentity(Json const& json)
{
    static constexpr std::array members { "userKey", "apiKey", "adId", "packageName" };
    return json.is_object() && std::ranges::all_of(members, [&json](char const* member) {
        auto const value = json.find(member);
        return value != json.end() && (value->is_string() || value->is_null());
    });
}

}

Shop const* shopWithId(std::string_view shopId)
{
    return findShop(&Shop::shopId, shopId);
}

Reply answerLookup(Request const& request)
{
    auto const question = readPost(request, "/");
    if (!question)
        return question.error();
    if (!isQuestion(*question))
        return errorReply(400, "the body must be an object of profile (dev or prd) and api_key (a string)");
    auto const* const shop = findShop(&Shop::apiKey, question->at("api_key").get<std::string>());
    if (!shop)
        return errorReply(404, "unknown api_key");
    return jsonReply(200, { { "data", { { "shopId", shop->shopId } } } });
}

Reply answerIdentity(Request const& request)
{
    auto const identity = readPost(request, "/");
    if (!identity)
        return identity.error();
    if (!isIdentity(*identity))
        return errorReply(400, "the body must have userKey, apiKey, adId and packageName, each a string or null");
    auto const& apiKey = identity->at("apiKey");
    auto const* const shop = apiKey.is_string() ? findShop(&Shop::apiKey, apiKey.get<std::string>()) : nullptr;
    if (!shop)
        return errorReply(404, "unknown apiKey");
    return jsonReply(200, { { "shop_id", shop->shopId } });
}

}
