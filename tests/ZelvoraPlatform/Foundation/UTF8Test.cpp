#include "ZelvoraPlatform/Foundation/UTF8.h"

#include <gtest/gtest.h>

namespace zelvora::platform {

namespace {

TEST(UTF8Test, WellFormedTextIsValid)
{
    for (std::string_view const text : { "", "ascii", "é", "한글", "😀", "\x7f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80",
             "\xed\x9f\xbf", "\xee\x80\x80", "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf" }) {
        EXPECT_TRUE(isValidUTF8(text)) << text;
        EXPECT_EQ(decodeUTF8(text), text);
    }
}

TEST(UTF8Test, AZeroByteIsACharacter)
{
    std::string_view const text("a\0b", 3);
    EXPECT_TRUE(isValidUTF8(text));
    EXPECT_EQ(decodeUTF8(text), text);
}

TEST(UTF8Test, IllFormedBytesAreNotText)
{
    for (std::string_view const bytes : {
             "\x80",
             "\xbf",
             "\xff",
             "\xfe",
             "\xc3",
             "\xc3\x28",
             "\xe1\x80",
             "\xe1\x80\x28",
             "\xf1\x80\x80",
             "\xf1\x80\x80\x28",
             // Overlong forms.
             "\xc0\x80",
             "\xc1\xbf",
             "\xe0\x80\x80",
             "\xe0\x9f\xbf",
             "\xf0\x80\x80\x80",
             "\xf0\x8f\xbf\xbf",
             // Surrogates.
             "\xed\xa0\x80",
             "\xed\xbf\xbf",
             // Above the last character.
             "\xf4\x90\x80\x80",
             "\xf5\x80\x80\x80",
             "\xf8\x88\x80\x80\x80",
         }) {
        EXPECT_FALSE(isValidUTF8(bytes));
        EXPECT_FALSE(isValidUTF8("before" + std::string(bytes)));
        EXPECT_FALSE(isValidUTF8(std::string(bytes) + "after"));
        EXPECT_EQ(decodeUTF8(bytes), std::nullopt);
    }
}

TEST(UTF8Test, EveryCharacterIsValidAndSurrogatesAreNot)
{
    for (std::uint32_t code = 0x800; code < 0x10000; ++code) {
        std::string bytes;
        bytes += static_cast<char>(0xE0U | (code >> 12U));
        bytes += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        bytes += static_cast<char>(0x80U | (code & 0x3FU));
        ASSERT_EQ(isValidUTF8(bytes), code < 0xD800 || code > 0xDFFF) << code;
    }
}

}

}
