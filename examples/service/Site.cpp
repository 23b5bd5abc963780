#include "examples/service/Site.h"

#include "examples/service/ShopDirectory.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace zelvora::examples {

namespace {

Reply moved(std::string location)
{
    return { .status = 301, .contentType = {}, .body = {}, .headers = { { "Location", std::move(location) } } };
}

} // namespace

Site::Site(std::filesystem::path directory, ShopDirectory const& shops, std::string hostSuffix, std::string profile)
    : m_pages(std::move(directory))
    , m_shops(shops)
    , m_hostSuffix(std::move(hostSuffix))
    , m_profile(std::move(profile))
{
}

Reply Site::answer(Request const& request)
{
    auto const shop = m_shops.shopOfId(request.host.substr(0, request.host.size() - m_hostSuffix.size()));
    if (!shop)
        return errorReply(404, "there is no such shop");
    if (!isRead(request))
        return methodNotAllowed("GET");
    if (request.path == "/v1")
        return moved(request.query.empty() ? "/v1/" : "/v1/?" + request.query);
    if (!request.path.starts_with("/v1/"))
        return errorReply(404, "the shop lives below /v1/");
    if (request.path == "/v1/shop.json") {
        return jsonReply(200,
            { { "shopId", shop->shopId }, { "profile", m_profile },
                { "name", { { "ko", shop->koreanName }, { "en", shop->englishName } } } });
    }
    return m_pages.read(std::string_view(request.path).substr(std::string_view("/v1/").size()));
}

Frames::Frames(std::filesystem::path directory) : m_pages(std::move(directory)) { }

Reply Frames::answer(Request const& request)
{
    if (!isRead(request))
        return methodNotAllowed("GET");
    return m_pages.read(std::string_view(request.path).substr(1));
}

} // namespace zelvora::examples
