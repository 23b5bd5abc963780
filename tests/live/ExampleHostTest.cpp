#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "examples/host/bars.h"
#include "examples/host/describe.h"
#include "examples/host/findWidget.h"
#include "examples/host/texts.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <cstdlib>
#include <string>

namespace zelvora::tests {

using examples::Description;

TEST(ExampleHostTest, AnEventIsShownWithoutWhatHasNoValue)
{
    platform::Dictionary const event { { "eventId", "purchase" }, { "coupon", platform::Null {} }, { "amount", 89000 },
        { "items", platform::Array { "a", "b" } }, { "page", "cart.html" }, { "referrer", "" } };
    Description const expected { .name = "purchase", .details = "amount 89000 · items [2] · page cart.html" };
    EXPECT_EQ(examples::describeEvent(event), expected);
}

TEST(ExampleHostTest, AnAddressIsShownAsAPersonWritesIt)
{
    Description const expected { .name = "/v1/product.html", .details = "uKey=홍길동 id=moon-jar" };
    EXPECT_EQ(
        examples::describeAddress("https://a.localhost:1/v1/product.html?uKey=%ED%99%8D%EA%B8%B8%EB%8F%99&id=moon-jar"),
        expected);
    EXPECT_EQ(examples::describeAddress("no address").name, "no address");
}

TEST(ExampleHostTest, TheAppSpeaksKoreanOrEnglishAsItsUserDoes)
{
    setenv("LANGUAGE", "ko", 1); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(examples::texts().appName, std::string("예제 앱"));
    setenv("LANGUAGE", "en", 1); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(examples::texts().appName, std::string("Example"));
}

TEST(ExampleHostTest, TheHeadersButtonHasANameForWhoCannotSeeItsIcon)
{
    ASSERT_TRUE(gtk_init_check());
    auto const header = gtk::sink(examples::makeHeader([] { }));
    auto* const leave = examples::findNamed(header.get(), "leave");
    ASSERT_TRUE(leave);
    gtk::GTextPointer const difference(gtk_test_accessible_check_property(
        GTK_ACCESSIBLE(leave), GTK_ACCESSIBLE_PROPERTY_LABEL, examples::texts().leave));
    EXPECT_FALSE(difference) << difference.get();
}

}
