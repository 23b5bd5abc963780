#include "tests/live/LiveShop.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace zelvora::tests {

namespace {

// Names of what a finger can touch but hardly hits, with their sizes; an element that is not shown has no box.
constexpr char const* smallControls = R"((() => {
    const all = [...document.querySelectorAll('a[href], button, input, select, textarea, summary, [role=button]')];
    const shown = all.filter((control) => control.getClientRects().length > 0);
    if (shown.length === 0)
        return ['no controls'];
    const measured = shown.map((control) => [control, control.getBoundingClientRect()]);
    return measured.filter(([, box]) => Math.round(box.width) < 44 || Math.round(box.height) < 44)
        .map(([control, box]) => `${control.id || control.tagName} ${Math.round(box.width)}x${Math.round(box.height)}`);
})())";

// What a screen reader could only call a button or a field.
constexpr char const* namelessControls = R"((() => {
    const all = [...document.querySelectorAll('a[href], button, input, select, textarea, iframe')];
    const name = (control) => control.ariaLabel || control.title || control.textContent.trim()
        || [...(control.labels ?? [])].map((label) => label.textContent.trim()).join('');
    return all.filter((control) => !control.hidden && !name(control)).map((control) => control.id || control.tagName);
})())";

// Names of what reaches out of the window at a side or out of a control, and the words that continue on another line.
// Addresses and the like have no words.
constexpr char const* cutContents = R"((() => {
    const shown = [...document.body.querySelectorAll('*')].filter((element) => element.getClientRects().length > 0);
    const name = (element) => element.id || element.className || element.tagName;
    const beyond = shown.filter((element) => {
        const box = element.getBoundingClientRect();
        return box.left < -1 || box.right > innerWidth + 1;
    });
    const cut = shown.filter((element) => element.matches('a, button, select')
        && (element.scrollWidth > element.clientWidth + 1 || element.scrollHeight > element.clientHeight + 1)
        && element.clientWidth > 0);
    const broken = [];
    for (const element of shown.filter((element) => !element.closest('code, ol, time, .entry, select'))) {
        const texts = [...element.childNodes].filter((node) => node.nodeType === Node.TEXT_NODE);
        for (const text of texts) {
            for (const word of text.data.matchAll(/\S+/g)) {
                const range = document.createRange();
                range.setStart(text, word.index);
                range.setEnd(text, word.index + word[0].length);
                if (new Set([...range.getClientRects()].map((box) => Math.round(box.top))).size > 1)
                    broken.push(word[0]);
            }
        }
    }
    return [...broken.map((word) => `${word} is broken`), ...beyond.map((element) => `${name(element)} is beyond the window`),
        ...cut.map((element) => `${name(element)} is cut off`)];
})())";

class ShopControlsTest : public testing::Test {
protected:
    void SetUp() override
    {
        shop.initialize();
        ASSERT_TRUE(shop.open());
        // So that the cart has a line and the collector an event.
        shop.page().click("product-moon-jar");
        ASSERT_TRUE(shop.page().waitUntilReady("/product.html"));
        shop.page().click("add-to-cart");
        ASSERT_TRUE(shop.page().waitFor("!document.getElementById('cart-count').hidden"));
    }

    // Evaluates the expression on every page, in both languages, and expects an empty list.
    void expectNothing(char const* expression)
    {
        for (std::string const language : { "ko", "en" }) {
            for (auto const* page : { "index.html", "product.html", "cart.html", "bridge.html", "links.html" }) {
                open(std::string(page) + "?id=moon-jar&lang=" + language);
                ASSERT_TRUE(shop.page().waitUntilReady(page));
                EXPECT_EQ(shop.page().evaluate(expression), "[]") << page << ' ' << language;
            }
            open(address("frames") + "/frame.html?lang=" + language);
            ASSERT_TRUE(
                shop.page().waitFor("document.readyState === 'complete' && document.getElementById('frame-get-item')"));
            EXPECT_EQ(shop.page().evaluate(expression), "[]") << "frame " << language;
            open(address("collector") + "/?lang=" + language);
            ASSERT_TRUE(shop.page().waitFor("document.readyState === 'complete' && document.querySelector('.totals')"));
            EXPECT_EQ(shop.page().evaluate(expression), "[]") << "collector " << language;
            open(address("hanok.shop") + "/v1/");
            ASSERT_TRUE(shop.page().waitUntilReady("/v1/"));
        }
    }

    void open(std::string const& address)
    {
        (void)shop.page().evaluate("(location.href = " + examples::Page::literal(address) + ", true)");
    }

    std::string address(std::string const& host) const
    {
        return "https://" + host + ".zelvora.localhost:" + std::to_string(shop.port());
    }

    LiveShop shop;
};

}

TEST_F(ShopControlsTest, EveryControlOfEveryPageIsAtLeast44PointsWideAndHigh)
{
    expectNothing(smallControls);
}

TEST_F(ShopControlsTest, EveryControlOfEveryPageHasAName)
{
    expectNothing(namelessControls);
}

TEST_F(ShopControlsTest, TextOfTwiceTheSizeIsCutOffNowhereAndStaysInTheWindow)
{
    webkit_settings_set_zoom_text_only(webkit_web_view_get_settings(shop.engine()), TRUE);
    webkit_web_view_set_zoom_level(shop.engine(), 2);
    expectNothing(cutContents);
    EXPECT_EQ(shop.page().evaluate("getComputedStyle(document.body).fontSize"), R"("30px")");
}

}
