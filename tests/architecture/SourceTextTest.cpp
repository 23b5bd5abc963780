#include "tests/architecture/SourceText.h"

#include <gtest/gtest.h>

namespace zelvora::architecture {

namespace {

using Kind = Include::Kind;
using Ending = GlobalDeclaration::Ending;

TEST(SourceTextTest, AnIncludeIsReadWithItsKindAndItsLine)
{
    auto const includes = includesOf("#pragma once\n#include \"a/b.h\"\n  #  include <vector> // why\n#import <c.h>\n");
    std::vector<Include> const expected {
        { Kind::Quoted, "a/b.h", 2 },
        { Kind::Angled, "vector", 3 },
        { Kind::Angled, "c.h", 4 },
    };
    EXPECT_EQ(includes, expected);
}

TEST(SourceTextTest, AnIncludeThatNamesAMacroIsReported)
{
    std::vector<Include> const expected { { Kind::Computed, "HEADER", 1 } };
    EXPECT_EQ(includesOf("#include HEADER\n"), expected);
}

TEST(SourceTextTest, AnIncludeInACommentDoesNotCount)
{
    EXPECT_TRUE(includesOf("// #include <a>\n/*\n#include <b>\n*/\n").empty());
}

TEST(SourceTextTest, TheMarksOfACommentInALiteralHideNothing)
{
    std::vector<Include> const expected { { Kind::Angled, "a", 3 } };
    EXPECT_EQ(includesOf("auto s = \"/*\\\"\";\nauto r = R\"x(/* \" )x\";\n#include <a>\n"), expected);
}

TEST(SourceTextTest, WhatIsOutsideAllBracesIsGlobal)
{
    auto const declarations = globalDeclarationsOf("int a = 1'000;\n\nnamespace n {\nint b;\n}\nvoid f()\n{\n}\n");
    std::vector<GlobalDeclaration> const expected {
        { Ending::Semicolon, "int a = 1'000", 1 },
        { Ending::Brace, "namespace n", 3 },
        { Ending::Brace, "void f()", 6 },
    };
    EXPECT_EQ(declarations, expected);
}

TEST(SourceTextTest, BracesInLiteralsCommentsAndDirectivesDoNotCount)
{
    auto const declarations = globalDeclarationsOf(
        "#define OPEN {\\\n{\nnamespace n {\nauto a = \"}\" R\"(})\"; // }\nchar b = '}'; /* } */\n}\nint c;\n");
    std::vector<GlobalDeclaration> const expected {
        { Ending::Brace, "namespace n", 3 },
        { Ending::Semicolon, "int c", 7 },
    };
    EXPECT_EQ(declarations, expected);
}

}

}
