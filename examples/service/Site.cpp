#include "examples/service/Site.h"

#include "examples/service/Shops.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

constexpr std::string_view root = "/v1/";
constexpr std::string_view packageFolder = "page-bridge/";

// A table of our own, because GIO knows none of these types on a machine without shared-mime-info, and has other names
// for modules and icons on one with it.
std::string contentTypeOf(std::filesystem::path const& file)
{
    static constexpr std::array<std::pair<std::string_view, char const*>, 17> types { {
        { ".html", "text/html; charset=utf-8" },
        { ".css", "text/css; charset=utf-8" },
        { ".js", "text/javascript; charset=utf-8" },
        { ".mjs", "text/javascript; charset=utf-8" },
        { ".json", "application/json" },
        { ".map", "application/json" },
        { ".webmanifest", "application/manifest+json" },
        { ".txt", "text/plain; charset=utf-8" },
        { ".wasm", "application/wasm" },
        { ".svg", "image/svg+xml" },
        { ".png", "image/png" },
        { ".jpg", "image/jpeg" },
        { ".gif", "image/gif" },
        { ".webp", "image/webp" },
        { ".ico", "image/x-icon" },
        { ".woff2", "font/woff2" },
        { ".mp4", "video/mp4" },
    } };
    auto const extension = file.extension().string();
    auto const* const found = std::ranges::find(types, extension, [](auto const& type) { return type.first; });
    return found == types.end() ? "application/octet-stream" : found->second;
}

bool isPlain(std::filesystem::path const& path)
{
    return path.is_relative() && std::ranges::none_of(path, [](std::filesystem::path const& part) {
        return part.string().starts_with('.') || part.string().contains('\\');
    });
}

// A symbolic link can lead out of the directory although the path does not.
bool isBelow(std::filesystem::path const& directory, std::filesystem::path const& file)
{
    std::error_code failure;
    auto const realDirectory = std::filesystem::canonical(directory, failure);
    if (failure)
        return false;
    auto const realFile = std::filesystem::weakly_canonical(file, failure);
    return !failure && std::ranges::mismatch(realDirectory, realFile).in1 == realDirectory.end();
}

Reply movedTo(std::string location, unsigned status = 301)
{
    return { .status = status, .contentType = {}, .body = {}, .headers = { { "Location", std::move(location) } } };
}

// A site need not bring the package for page authors.
Reply readSite(std::filesystem::path const& pages, std::string_view path)
{
    auto reply = readPage(pages, path);
    if (reply.status == 404 && path.starts_with(packageFolder))
        return readPage(ZELVORA_SERVICE_PAGE_PACKAGE, path.substr(packageFolder.size()));
    return reply;
}

Reply describe(Shop const& shop, std::string_view profile)
{
    Json const name = { { "ko", shop.koreanName }, { "en", shop.englishName } };
    return jsonReply(200, { { "shopId", shop.shopId }, { "profile", profile }, { "name", name } });
}

}

Reply readPage(std::filesystem::path const& directory, std::string_view path)
{
    std::filesystem::path relative(path);
    if (path.empty() || path.ends_with('/'))
        relative /= "index.html";
    auto const file = directory / relative;
    if (!isPlain(relative) || !isBelow(directory, file))
        return errorReply(403, "this path leads out of the site");
    std::error_code ignored;
    std::ifstream stream(file, std::ios::binary);
    if (!std::filesystem::is_regular_file(file, ignored) || !stream)
        return errorReply(404, "there is no such page");
    return { .status = 200,
        .contentType = contentTypeOf(file),
        .body = std::string(std::istreambuf_iterator<char>(stream), {}),
        .headers = { { "Cache-Control", "no-cache" }, { "X-Content-Type-Options", "nosniff" } } };
}

Reply answerShop(std::filesystem::path const& pages, std::string_view profile, Request const& request)
{
    auto const* const shop = shopWithId(std::string_view(request.host).substr(0, request.host.find('.')));
    if (!shop)
        return errorReply(404, "there is no such shop");
    if (!isRead(request))
        return methodNotAllowed("GET");
    if (request.path == "/v1")
        return movedTo(request.query.empty() ? "/v1/" : "/v1/?" + request.query);
    if (!request.path.starts_with(root))
        return errorReply(404, "the shop is below /v1/");
    if (request.path == "/v1/shop.json")
        return describe(*shop, profile);
    return readSite(pages, std::string_view(request.path).substr(root.size()));
}

Reply leadElsewhere(std::string_view address, Request const& request)
{
    if (!isRead(request))
        return methodNotAllowed("GET");
    if (request.path != root)
        return errorReply(404, "this shop's pages are on another server");
    // Not for good: the next address may be another one.
    constexpr unsigned found = 302;
    auto location = std::string(address);
    if (!request.query.empty())
        location += (location.contains('?') ? "&" : "?") + request.query;
    return movedTo(std::move(location), found);
}

Reply answerFrames(std::filesystem::path const& pages, Request const& request)
{
    if (!isRead(request))
        return methodNotAllowed("GET");
    return readSite(pages, std::string_view(request.path).substr(1));
}

}
