#include "examples/service/Site.h"

#include "tests/examples/ServiceFixture.h"

#include <array>
#include <utility>

namespace zelvora::tests {

class SiteTest : public ServiceFixture {
protected:
    // Asks for exactly this path, which a client normalizes if it is part of an address.
    unsigned statusOfPath(std::string const& path)
    {
        gtk::GUriPointer const uri(g_uri_build(G_URI_FLAGS_ENCODED, "https", nullptr, "hanok.shop.zelvora.localhost",
            m_service->port(), path.c_str(), nullptr, nullptr));
        return m_client.send(gtk::adopt(soup_message_new_from_uri("GET", uri.get())).get()).status;
    }

    // Pages of its own instead of those that come with the service.
    std::filesystem::path makeSite(std::string const& index)
    {
        auto const site = m_directory.path() / "site";
        std::filesystem::create_directories(site / "shop");
        EXPECT_EQ(m_directory.write("site/shop/index.html", index), site / "shop" / "index.html");
        return site;
    }
};

TEST_F(SiteTest, PagesAreServedWithTheirContentTypes)
{
    static constexpr std::array<std::pair<char const*, char const*>, 9> pages { {
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
    for (auto const& [path, type] : pages) {
        auto const answer = get("hanok.shop", path);
        EXPECT_EQ(answer.status, 200U) << path;
        EXPECT_EQ(answer.contentType, type) << path;
        EXPECT_FALSE(answer.body.empty()) << path;
    }
}

TEST_F(SiteTest, TheEntryAddressOfAnAppLeadsToTheList)
{
    auto const entry = get("hanok.shop", "/v1/?adid=&uKey=%ED%95%9C&rid=M-AD-SDK");
    EXPECT_EQ(entry.status, 200U);
    EXPECT_EQ(entry.body, get("hanok.shop", "/v1/index.html").body);
    EXPECT_EQ(get("hanok.shop", "/v1?adid=").status, 301U);
}

TEST_F(SiteTest, EveryShopKnowsItsNameAndItsEnvironment)
{
    auto const production = Json::parse(get("hanok.shop", "/v1/shop.json").body);
    auto const development = Json::parse(get("garden.dev", "/v1/shop.json").body);
    EXPECT_EQ(
        production, Json::parse(R"({"shopId":"hanok","profile":"prd","name":{"ko":"한옥상점","en":"Hanok Store"}})"));
    EXPECT_EQ(
        development, Json::parse(R"({"shopId":"garden","profile":"dev","name":{"ko":"뜰가게","en":"Garden Shop"}})"));
}

TEST_F(SiteTest, HostNamesAreReadWithoutRegardToCase)
{
    EXPECT_EQ(get("HANOK.Shop", "/v1/").status, 200U);
}

TEST_F(SiteTest, TheFrameIsServedFromItsOwnOrigin)
{
    EXPECT_EQ(get("frames", "/frame.html").contentType, "text/html; charset=utf-8");
    EXPECT_EQ(get("hanok.shop", "/v1/frame.html").status, 404U);
}

TEST_F(SiteTest, TheShopAndTheFrameHaveThePackageForPageAuthors)
{
    auto const package = get("hanok.shop", "/v1/page-bridge/index.js");
    EXPECT_EQ(package.contentType, "text/javascript; charset=utf-8");
    EXPECT_TRUE(package.body.contains("saveEvent")) << package.body;
    EXPECT_EQ(get("frames", "/page-bridge/index.js").body, package.body);
    EXPECT_EQ(get("hanok.shop", "/v1/page-bridge/stand-in/index.js").status, 200U);
    EXPECT_EQ(get("hanok.shop", "/v1/page-bridge/nothing.js").status, 404U);
    EXPECT_EQ(statusOfPath("/v1/page-bridge//etc/passwd"), 403U);
}

TEST_F(SiteTest, ASiteMayHaveAPackageOfItsOwn)
{
    auto const site = makeSite("index");
    std::filesystem::create_directory(site / "shop" / "page-bridge");
    ASSERT_FALSE(m_directory.write("site/shop/page-bridge/index.js", "own").empty());
    restart(site);
    EXPECT_EQ(get("hanok.shop", "/v1/page-bridge/index.js").body, "own");
    EXPECT_EQ(get("hanok.shop", "/v1/page-bridge/stand-in/index.js").status, 200U);
}

TEST_F(SiteTest, WhatIsNotThereIsNotFound)
{
    for (auto const* path : { "/", "/v2/", "/v1/nothing.html", "/v1/pictures/", "/v1/pictures" })
        EXPECT_EQ(get("hanok.shop", path).status, 404U) << path;
}

TEST_F(SiteTest, PagesCanOnlyBeRead)
{
    EXPECT_EQ(m_client.send("HEAD", at("hanok.shop", "/v1/")).status, 200U);
    EXPECT_EQ(post("hanok.shop", "/v1/", "{}").status, 405U);
    EXPECT_EQ(post("frames", "/frame.html", "{}").status, 405U);
}

TEST_F(SiteTest, APathThatLeadsOutOfTheSiteIsRefused)
{
    ASSERT_EQ(statusOfPath("/v1/cart.html"), 200U);
    for (auto const* path : { "/v1/../frames/frame.html", "/v1/%2e%2e/frames/frame.html",
             "/v1/pictures/../../../main.cpp", "/../v1/../frames/frame.html" }) {
        EXPECT_EQ(statusOfPath(path), 404U) << path;
    }
    for (auto const* path : { "/v1//etc/passwd", "/v1/.hidden", "/v1/..%5cframes" })
        EXPECT_EQ(statusOfPath(path), 403U) << path;
    for (auto const* path : { "/v1/..%2fframes/frame.html", "/v1/cart.html%00.png", "/v1/%zz" })
        EXPECT_EQ(statusOfPath(path), 400U) << path;
}

TEST(PageTest, APathOutOfTheDirectoryIsRefused)
{
    TemporaryDirectory const directory;
    auto const pages = directory.path() / "pages";
    std::filesystem::create_directory(pages);
    ASSERT_EQ(directory.write("pages/page.html", "open"), pages / "page.html");
    ASSERT_EQ(directory.write("secret.html", "secret"), directory.path() / "secret.html");
    EXPECT_EQ(examples::readPage(pages, "page.html").body, "open");
    for (auto const* path : { "../secret.html", "./page.html", "a/../../secret.html", "/etc/passwd", "..", ".", "../" })
        EXPECT_EQ(examples::readPage(pages, path).status, 403U) << path;
}

TEST_F(SiteTest, ALinkThatLeadsOutOfTheSiteIsRefused)
{
    auto const site = makeSite("open");
    std::filesystem::create_symlink(m_directory.write("secret.html", "secret"), site / "shop" / "link.html");
    restart(site);
    EXPECT_EQ(get("hanok.shop", "/v1/").body, "open");
    auto const answer = get("hanok.shop", "/v1/link.html");
    EXPECT_EQ(answer.status, 403U);
    EXPECT_EQ(answer.body.find("secret"), std::string::npos);
}

TEST_F(SiteTest, AnEditedPageIsSeenAtTheNextRequest)
{
    restart(makeSite("before"));
    EXPECT_EQ(get("hanok.shop", "/v1/").body, "before");
    (void)makeSite("after");
    EXPECT_EQ(get("hanok.shop", "/v1/").body, "after");
}

TEST_F(SiteTest, TheShopsPagesMayBeInAnotherFolder)
{
    (void)m_directory.write("pages/index.html", "<p>mine");
    (void)m_directory.write("pages/app.mjs", "export {}");
    restart(examples::ServiceOptions {
        .dataDirectory = m_directory.path() / "data", .shopDirectory = m_directory.path() / "pages" });
    EXPECT_EQ(get("hanok.shop", "/v1/?adid=a").body, "<p>mine");
    EXPECT_EQ(get("hanok.shop", "/v1/app.mjs").contentType, "text/javascript; charset=utf-8");
    EXPECT_EQ(get("frames", "/frame.html").status, 200U);
}

TEST_F(SiteTest, TheShopsPagesMayBeOnAnotherServerWhichTheEntryLeadsTo)
{
    auto const address = m_service->address("frames") + "/frame.html";
    restart(examples::ServiceOptions { .dataDirectory = m_directory.path() / "data", .shopAddress = address });
    EXPECT_EQ(get("hanok.shop", "/v1/?adid=a").status, 302U);
    EXPECT_EQ(get("hanok.shop", "/v1/cart.html").status, 404U);
    EXPECT_EQ(post("hanok.shop", "/v1/", "{}").status, 405U);
}

TEST(LeadElsewhereTest, TheQueryOfTheEntryIsPassedOn)
{
    auto const locationOf = [](std::string_view address, std::string const& query) {
        examples::Request const entry {
            .method = "GET", .host = {}, .path = "/v1/", .query = query, .contentType = {}, .body = {}
        };
        return examples::leadElsewhere(address, entry).headers.at(0).second;
    };
    EXPECT_EQ(locationOf("http://localhost:5173/", "adid=a&rid=b"), "http://localhost:5173/?adid=a&rid=b");
    EXPECT_EQ(locationOf("http://localhost:5173/?x=1", "adid=a"), "http://localhost:5173/?x=1&adid=a");
    EXPECT_EQ(locationOf("http://localhost:5173/", ""), "http://localhost:5173/");
}

}
