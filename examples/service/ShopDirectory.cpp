#include "examples/service/ShopDirectory.h"

#include <algorithm>

namespace zelvora::examples {

namespace {

std::optional<Shop> firstWith(std::vector<Shop> const& shops, std::string Shop::* member, std::string_view wanted)
{
    auto const found = std::ranges::find(shops, wanted, member);
    if (found == shops.end())
        return std::nullopt;
    return *found;
}

} // namespace

ShopDirectory::ShopDirectory()
    : m_shops {
        { .apiKey = "demo-key", .shopId = "hanok", .koreanName = "한옥상점", .englishName = "Hanok Store" },
        { .apiKey = "demo-key-harbor", .shopId = "harbor", .koreanName = "항구마켓", .englishName = "Harbor Market" },
        { .apiKey = "demo-key-garden", .shopId = "garden", .koreanName = "뜰가게", .englishName = "Garden Shop" },
    }
{
}

std::optional<Shop> ShopDirectory::shopOfKey(std::string_view apiKey) const
{
    return firstWith(m_shops, &Shop::apiKey, apiKey);
}

std::optional<Shop> ShopDirectory::shopOfId(std::string_view shopId) const
{
    return firstWith(m_shops, &Shop::shopId, shopId);
}

} // namespace zelvora::examples
