#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::examples {

struct Shop {
    std::string apiKey;
    std::string shopId;
    std::string koreanName;
    std::string englishName;
};

/// The service's customers: which shop belongs to which API key. Immutable after construction.
class ShopDirectory {
public:
    ShopDirectory();

    std::optional<Shop> shopOfKey(std::string_view apiKey) const;
    std::optional<Shop> shopOfId(std::string_view shopId) const;

private:
    std::vector<Shop> m_shops;
};

} // namespace zelvora::examples
