#include "examples/service/StaticFiles.h"
#include "tests/examples/ServiceFixture.h"

#include <array>
#include <utility>

namespace zelvora::examples {

using SiteTest = ServiceFixture;

TEST_F(SiteTest, PagesAreServedWithTheirContentTypes)
{
    static constexpr std::array<std::pair<char const*, char const*>, 9> s_pages { {
        { "/v1/", "text/html; charset=utf-8" },
        { "/v1/index.html", "text/html; charset=utf-8" },
        { "/v1/product.html?id=moon-jar", "text/html; charset=utf-8" },
        { "/v1/cart.html", "text/html; charset=utf-8" },
        { "/v1/bridge.html", "text/html; charset=utf-8" },
        { "/v1/links.html", "text/html; charset=utf-8" },
        { "/v1/style.css", "text/css; charset=utf-8" },
        { "/v1/shop.js", "text/javascript; charset=utf-8" },
        { "/v1/pictures/moon-jar.svg", "image/svg+xml" },
    } };
    for (auto const& [path, type] : s_pages) {
        auto const answer = client.get(at("hanok.shop", path));
        EXPECT_EQ(answer.status, 200U) << path;
        EXPECT_EQ(answer.contentType, type) << path;
        EXPECT_FALSE(answer.body.empty()) << path;
    }
}

TEST_F(SiteTest, TheEntryAddressOfAnAppLeadsToTheList)
{
    auto const entry = client.get(at("hanok.shop", "/v1/?adid=&uKey=%ED%95%9C&rid=M-AD-SDK"));
    EXPECT_EQ(entry.status, 200U);
    EXPECT_EQ(entry.body, client.get(at("hanok.shop", "/v1/index.html")).body);
    EXPECT_EQ(client.get(at("hanok.shop", "/v1?adid=")).status, 301U);
}

TEST_F(SiteTest, EveryShopKnowsItsNameAndItsEnvironment)
{
    auto const production = nlohmann::json::parse(client.get(at("hanok.shop", "/v1/shop.json")).body);
    auto const development = nlohmann::json::parse(client.get(at("garden.dev", "/v1/shop.json")).body);
    EXPECT_EQ(production,
        nlohmann::json::parse(R"({"shopId":"hanok","profile":"prd","name":{"ko":"한옥상점","en":"Hanok Store"}})"));
    EXPECT_EQ(development,
        nlohmann::json::parse(R"({"shopId":"garden","profile":"dev","name":{"ko":"뜰가게","en":"Garden Shop"}})"));
}

TEST_F(SiteTest, HostNamesAreReadWithoutRegardToCase)
{
    EXPECT_EQ(client.get(at("HANOK.Shop", "/v1/")).status, 200U);
}

TEST_F(SiteTest, TheFrameIsServedFromItsOwnOrigin)
{
    EXPECT_EQ(client.get(at("frames", "/frame.html")).contentType, "text/html; charset=utf-8");
    EXPECT_EQ(client.get(at("hanok.shop", "/v1/frame.html")).status, 404U);
}

TEST_F(SiteTest, WhatIsNotThereIsNotFound)
{
    for (auto const* path : { "/", "/v2/", "/v1/nothing.html", "/v1/pictures/", "/v1/pictures" })
        EXPECT_EQ(client.get(at("hanok.shop", path)).status, 404U) << path;
}

TEST_F(SiteTest, PagesCanOnlyBeRead)
{
    EXPECT_EQ(client.send("HEAD", at("hanok.shop", "/v1/")).status, 200U);
    EXPECT_EQ(client.post(at("hanok.shop", "/v1/"), "{}").status, 405U);
    EXPECT_EQ(client.post(at("frames", "/frame.html"), "{}").status, 405U);
}

TEST_F(SiteTest, APathThatLeadsOutOfTheSiteIsRefused)
{
    auto const shop = at("hanok.shop", "/");
    ASSERT_EQ(client.statusOfPath(shop, "/v1/cart.html"), "HTTP/1.1 200 OK\r");
    for (auto const* path : { "/v1/../frames/frame.html", "/v1/%2e%2e/frames/frame.html",
             "/v1/pictures/../../../main.cpp", "/../v1/../frames/frame.html" }) {
        EXPECT_EQ(client.statusOfPath(shop, path), "HTTP/1.1 404 Not Found\r") << path;
    }
    for (auto const* path : { "/v1//etc/passwd", "/v1/.hidden", "/v1/..%5cframes" })
        EXPECT_EQ(client.statusOfPath(shop, path), "HTTP/1.1 403 Forbidden\r") << path;
    for (auto const* path : { "/v1/..%2fframes/frame.html", "/v1/cart.html%00.png", "/v1/%zz" })
        EXPECT_EQ(client.statusOfPath(shop, path), "HTTP/1.1 400 Bad Request\r") << path;
}

TEST(StaticFilesTest, APathOutOfTheDirectoryIsRefused)
{
    TemporaryDirectory const directory;
    std::filesystem::create_directory(directory.path() / "pages");
    write(directory.path() / "pages" / "page.html", "open");
    write(directory.path() / "secret.html", "secret");
    StaticFiles const pages(directory.path() / "pages");
    EXPECT_EQ(pages.read("page.html").body, "open");
    for (auto const* path : { "../secret.html", "./page.html", "a/../../secret.html", "/etc/passwd", "..", ".", "../" })
        EXPECT_EQ(pages.read(path).status, 403U) << path;
}

TEST_F(SiteTest, ALinkThatLeadsOutOfTheSiteIsRefused)
{
    auto const site = directory.path() / "site";
    std::filesystem::create_directories(site / "shop");
    write(directory.path() / "secret.html", "secret");
    write(site / "shop" / "index.html", "open");
    std::filesystem::create_symlink(directory.path() / "secret.html", site / "shop" / "link.html");
    restart(site);
    EXPECT_EQ(client.get(at("hanok.shop", "/v1/")).body, "open");
    auto const answer = client.get(at("hanok.shop", "/v1/link.html"));
    EXPECT_EQ(answer.status, 403U);
    EXPECT_EQ(answer.body.find("secret"), std::string::npos);
}

TEST_F(SiteTest, AnEditedPageIsSeenAtTheNextRequest)
{
    auto const site = directory.path() / "site";
    std::filesystem::create_directories(site / "shop");
    write(site / "shop" / "index.html", "before");
    restart(site);
    EXPECT_EQ(client.get(at("hanok.shop", "/v1/")).body, "before");
    write(site / "shop" / "index.html", "after");
    EXPECT_EQ(client.get(at("hanok.shop", "/v1/")).body, "after");
}

} // namespace zelvora::examples
