#include "tests/architecture/PublicHeaders.h"

#include "tests/architecture/SourceTree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zelvora::architecture {

namespace {

class PublicHeadersTest : public SourceTreeTest {
protected:
    std::vector<Violation> violationsOf(std::string const& file, std::string const& source)
    {
        write(file, source);
        return surveyPublicHeaders(tree()).violations;
    }
};

TEST_F(PublicHeadersTest, TheProjectKeepsItsInternalHeadersToItself)
{
    auto const survey = surveyPublicHeaders(ZELVORA_SOURCE_TREE);
    EXPECT_EQ(survey.violations, std::vector<Violation> {});
    EXPECT_GT(survey.publicHeaders, 0U);
}

TEST_F(PublicHeadersTest, AHeaderForHostsMayIncludeOthersForHosts)
{
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/gtk/Host.h",
        "#include \"ZelvoraAdapters/gtk/Platform.h\"\n#include \"ZelvoraAdapters/shared/JSON/A.h\"\n"
        "#include \"ZelvoraPlatform/UIKit/UIView.h\"\n#include <gtk/gtk.h>\n")
            .empty());
}

TEST_F(PublicHeadersTest, AHeaderForHostsThatIncludesAnInternalOneIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h", "#pragma once\n#include \"ZelvoraIOS/internal/B.h\"\n"),
        one("ZelvoraIOS/A.h", 2,
            "a header for hosts must not include \"ZelvoraIOS/internal/B.h\", which is not installed"));
}

TEST_F(PublicHeadersTest, AHeaderForHostsThatIncludesAFolderOfTheLinuxAdapterIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/gtk/Host.h", "#include \"ZelvoraAdapters/gtk/UIKit/A.h\"\n").size(), 1U);
    EXPECT_EQ(violationsOf("ZelvoraAdapters/gtk/Host.h", "#include \"ZelvoraAdapters/gtk/GLib/A.h\"\n").size(), 1U);
}

TEST_F(PublicHeadersTest, ALibraryMayIncludeItsOwnInternalHeaders)
{
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/shared/Journal/internal/A.h",
        "#include \"ZelvoraAdapters/shared/JSON/internal/B.h\"\nclass A {\n};\n")
            .empty());
    EXPECT_TRUE(violationsOf("ZelvoraIOS/A.cpp", "#include \"ZelvoraIOS/ZelvoraSDK/internal/B.h\"\n").empty());
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/gtk/UIKit/A.cpp",
        "#include \"ZelvoraAdapters/gtk/UIKit/A.h\"\n#include \"ZelvoraAdapters/gtk/GLib/B.h\"\n")
            .empty());
}

TEST_F(PublicHeadersTest, CodeThatIncludesAnInternalHeaderOfAnotherLibraryIsFound)
{
    auto const* const include = "#include \"ZelvoraAdapters/shared/Journal/internal/A.h\"\n";
    auto const* const reason = "\"ZelvoraAdapters/shared/Journal/internal/A.h\" is internal to ZelvoraAdapters/shared";
    for (auto const* const file : { "ZelvoraAdapters/memory/A.cpp", "examples/host/A.cpp", "bench/A.cpp" }) {
        EXPECT_EQ(violationsOf(file, include), one(file, 1, reason));
        // The survey of the next file reads this one again.
        EXPECT_TRUE(violationsOf(file, "").empty());
    }
}

TEST_F(PublicHeadersTest, AnExampleMayIncludeTheHandlesOfGLib)
{
    EXPECT_TRUE(violationsOf("examples/A.cpp", "#include \"ZelvoraAdapters/gtk/GLib/Pointers.h\"\n").empty());
}

TEST_F(PublicHeadersTest, TheTestsMayIncludeEverything)
{
    EXPECT_TRUE(violationsOf("tests/A.cpp", "#include \"ZelvoraIOS/internal/B.h\"\n").empty());
}

TEST_F(PublicHeadersTest, AClassForHostsThatIsNotExportedIsFound)
{
    EXPECT_EQ(
        violationsOf("ZelvoraPlatform/A.h", "namespace zelvora {\n\nclass B;\n\nclass A final : public B {\n};\n\n}\n"),
        one("ZelvoraPlatform/A.h", 5, "a class for hosts must be ZELVORA_API: A"));
    EXPECT_EQ(violationsOf("ZelvoraPlatform/A.h", "class A\n    : public B {\n};\n").size(), 1U);
}

TEST_F(PublicHeadersTest, OnlyClassesThatHostsCanLinkAreExported)
{
    EXPECT_TRUE(violationsOf("ZelvoraPlatform/A.h",
        "class ZELVORA_API A final {\n    class Nested {\n    };\n};\nclass [[nodiscard]] ZELVORA_API B {\n};\n"
        "template<typename C>\nclass D {\n};\ntemplate<>\nclass D<int> final {\n};\nstruct E {\n};\nclass F;\n")
            .empty());
    EXPECT_TRUE(violationsOf("ZelvoraPlatform/A.cpp", "class A {\n};\n").empty());
}

}

}
