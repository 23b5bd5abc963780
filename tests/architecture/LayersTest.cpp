#include "tests/architecture/Layers.h"

#include "tests/architecture/SourceTree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zelvora::architecture {

namespace {

class LayersTest : public SourceTreeTest {
protected:
    std::vector<Violation> violationsOf(std::string const& file, std::string const& source)
    {
        write(file, source);
        return surveyLayers(tree()).violations;
    }
};

TEST_F(LayersTest, TheProjectKeepsItsLayersApart)
{
    EXPECT_EQ(surveyLayers(ZELVORA_SOURCE_TREE).violations, std::vector<Violation> {});
}

TEST_F(LayersTest, TheSurveyOfTheProjectReadsEveryLayer)
{
    auto const sourcesRead = surveyLayers(ZELVORA_SOURCE_TREE).sourcesRead;
    for (auto const* layer : { "ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters/shared", "ZelvoraAdapters/memory",
             "ZelvoraAdapters/gtk", "ZelvoraAdapters/uikit", "ZelvoraContract", "module" })
        EXPECT_TRUE(sourcesRead.contains(layer)) << layer;
}

TEST_F(LayersTest, ThePlatformMayIncludeItselfAndTheStandardLibrary)
{
    EXPECT_TRUE(violationsOf("ZelvoraPlatform/A.h", "#include \"ZelvoraPlatform/B.h\"\n#include <vector>\n").empty());
}

TEST_F(LayersTest, APublicHeaderOfTheModuleMayNameItsSiblingAlone)
{
    EXPECT_TRUE(violationsOf("module/ObjectiveC/A.h", "#import \"B.h\"\n").empty());
}

TEST_F(LayersTest, AContractSuiteThatIncludesWhatIsNotInstalledIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraContract/A.h", "#include \"tests/support/B.h\"\n"),
        one("ZelvoraContract/A.h", 1, "ZelvoraContract must not include \"tests/support/B.h\""));
}

TEST_F(LayersTest, AnSDKThatNamesASiblingAloneIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h", "#include \"B.h\"\n"),
        one("ZelvoraIOS/A.h", 1, "ZelvoraIOS must not include \"B.h\""));
}

TEST_F(LayersTest, APlatformThatIncludesTheSDKIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraPlatform/UIKit/A.h", "#pragma once\n#include \"ZelvoraIOS/B.h\"\n"),
        one("ZelvoraPlatform/UIKit/A.h", 2, "ZelvoraPlatform must not include \"ZelvoraIOS/B.h\""));
}

TEST_F(LayersTest, APlatformThatIncludesASystemHeaderIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraPlatform/A.cpp", "#include <unistd.h>\n"),
        one("ZelvoraPlatform/A.cpp", 1,
            "ZelvoraPlatform includes a header that is not of the standard library: <unistd.h>"));
}

TEST_F(LayersTest, AnSDKThatIncludesAnAdapterIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.cpp", "#include \"ZelvoraAdapters/memory/B.h\"\n"),
        one("ZelvoraIOS/A.cpp", 1, "ZelvoraIOS must not include \"ZelvoraAdapters/memory/B.h\""));
}

TEST_F(LayersTest, AnSDKThatIncludesALibraryIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.cpp", "#include <nlohmann/json.hpp>\n"),
        one("ZelvoraIOS/A.cpp", 1,
            "ZelvoraIOS includes a header that is not of the standard library: <nlohmann/json.hpp>"));
}

TEST_F(LayersTest, ATemplateThatTheBuildFillsInIsReadToo)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h.in", "#include <gtk/gtk.h>\n").size(), 1U);
}

TEST_F(LayersTest, AnAdapterMayIncludeThePlatformItselfTheSharedCodeAndTheSystem)
{
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/gtk/A.cpp",
        "#include \"ZelvoraPlatform/A.h\"\n#include \"ZelvoraAdapters/gtk/A.h\"\n#include "
        "\"ZelvoraAdapters/shared/A.h\"\n"
        "#include <gtk/gtk.h>\n")
            .empty());
}

TEST_F(LayersTest, AnAdapterThatIncludesTheSDKIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/gtk/A.cpp", "\n#include \"ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h\"\n"),
        one("ZelvoraAdapters/gtk/A.cpp", 2,
            "ZelvoraAdapters/gtk must not include \"ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h\""));
}

TEST_F(LayersTest, AnAdapterThatIncludesAnotherAdapterIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/gtk/A.cpp", "#include \"ZelvoraAdapters/memory/A.h\"\n"),
        one("ZelvoraAdapters/gtk/A.cpp", 1, "ZelvoraAdapters/gtk must not include \"ZelvoraAdapters/memory/A.h\""));
}

TEST_F(LayersTest, SharedCodeThatIncludesAnAdapterIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/shared/A.cpp", "#include \"ZelvoraAdapters/gtk/A.h\"\n"),
        one("ZelvoraAdapters/shared/A.cpp", 1, "ZelvoraAdapters/shared must not include \"ZelvoraAdapters/gtk/A.h\""));
}

TEST_F(LayersTest, AnIncludePathThatDoesNotStartAtTheTopIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraPlatform/A.cpp", "#include \"A.h\"\n"),
        one("ZelvoraPlatform/A.cpp", 1, "ZelvoraPlatform must not include \"A.h\""));
    EXPECT_EQ(violationsOf("ZelvoraPlatform/A.cpp", "#include \"ZelvoraPlatform/../ZelvoraIOS/A.h\"\n"),
        one("ZelvoraPlatform/A.cpp", 1, "ZelvoraPlatform must not include \"ZelvoraPlatform/../ZelvoraIOS/A.h\""));
}

TEST_F(LayersTest, AnIncludeThatNamesAMacroIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/gtk/A.cpp", "#include HEADER\n"),
        one("ZelvoraAdapters/gtk/A.cpp", 1, "an include must name its file, not HEADER"));
}

TEST_F(LayersTest, ADefinitionOutsideTheNamespaceIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h", "namespace zelvora {\n}\n\nclass A final {\n};\n"),
        one("ZelvoraIOS/A.h", 4, "not in the namespace zelvora: class A final"));
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h", "namespace other::zelvora {\n}\n"),
        one("ZelvoraIOS/A.h", 1, "not in the namespace zelvora: namespace other::zelvora"));
    EXPECT_EQ(violationsOf("ZelvoraIOS/A.h", "namespace {\n}\n"),
        one("ZelvoraIOS/A.h", 1, "not in the namespace zelvora: namespace"));
}

TEST_F(LayersTest, AUsingDirectiveOutsideTheNamespaceIsFound)
{
    EXPECT_EQ(violationsOf("ZelvoraAdapters/memory/A.cpp", "using namespace zelvora::platform;\n"),
        one("ZelvoraAdapters/memory/A.cpp", 1, "not in the namespace zelvora: using namespace zelvora::platform"));
}

TEST_F(LayersTest, DeclarationsOfCMayBeOutsideTheNamespace)
{
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/gtk/A.h",
        "typedef struct _GtkWidget GtkWidget;\nextern \"C\" int const version;\nextern \"C\" {\nint f(void);\n}\n"
        "namespace zelvora::gtk {\nclass A;\n}\n")
            .empty());
}

TEST_F(LayersTest, ObjectiveCMayDeclareItsClassesOutsideTheNamespace)
{
    auto const* const shop = "@interface Shop : NSObject\n@end\n@implementation Shop\n@end\n";
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/watch/Shop.m", shop).empty());
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/watch/Shop.mm", shop).empty());
}

TEST_F(LayersTest, AHeaderOfThePhonesAdapterMayDeclareWhatObjectiveCSees)
{
    auto const* const shop = "@class UIView;\n@interface Shop : NSObject\n@end\n";
    EXPECT_TRUE(violationsOf("ZelvoraAdapters/uikit/Shop.h", shop).empty());
    EXPECT_EQ(violationsOf("ZelvoraAdapters/watch/Shop.h", shop).size(), 2U);
}

TEST_F(LayersTest, ObjectiveCMayImportTheSystemAndNothingThatAnAdapterMayNot)
{
    for (auto const* const file :
        { "ZelvoraAdapters/uikit/A.h", "ZelvoraAdapters/uikit/A.m", "ZelvoraAdapters/uikit/A.mm" }) {
        EXPECT_TRUE(violationsOf(file, "#import <UIKit/UIKit.h>\n#import \"ZelvoraAdapters/uikit/B.h\"\n").empty());
        EXPECT_EQ(violationsOf(file, "#import \"ZelvoraAdapters/memory/B.h\"\n"),
            one(file, 1, "ZelvoraAdapters/uikit must not include \"ZelvoraAdapters/memory/B.h\""));
        // The survey of the next file reads this one again.
        EXPECT_TRUE(violationsOf(file, "").empty());
    }
}

TEST_F(LayersTest, TheModuleIsBuiltOnTheSDKAndThePhonesAdapter)
{
    EXPECT_TRUE(violationsOf("module/ObjectiveC/A.mm",
        "#import <UIKit/UIKit.h>\n#import \"module/ObjectiveC/A.h\"\n#include \"ZelvoraAdapters/uikit/Host.h\"\n"
        "#include \"ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h\"\n#include \"ZelvoraPlatform/Platform.h\"\n")
            .empty());
    EXPECT_EQ(violationsOf("module/ObjectiveC/A.mm", "#include \"ZelvoraAdapters/shared/A.h\"\n"),
        one("module/ObjectiveC/A.mm", 1, "module must not include \"ZelvoraAdapters/shared/A.h\""));
}

TEST_F(LayersTest, NothingIncludesTheModule)
{
    for (auto const* const folder : { "ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters/uikit" }) {
        auto const file = std::string(folder) + "/A.h";
        EXPECT_EQ(violationsOf(file, "#import \"module/ObjectiveC/B.h\"\n"),
            one(file, 1, std::string(folder) + " must not include \"module/ObjectiveC/B.h\""));
        EXPECT_TRUE(violationsOf(file, "").empty());
    }
}

TEST_F(LayersTest, AHeaderOfTheModuleMayDeclareWhatObjectiveCSees)
{
    EXPECT_TRUE(violationsOf("module/ObjectiveC/Shop.h", "@class UIView;\n@interface Shop : NSObject\n@end\n").empty());
}

TEST_F(LayersTest, TheTestsAndTheExamplesAreNotALayer)
{
    EXPECT_TRUE(violationsOf("tests/A.cpp", "#include \"A.h\"\nclass B { };\n").empty());
    EXPECT_TRUE(violationsOf("examples/A.cpp", "#include <gtk/gtk.h>\nint main() { }\n").empty());
}

}

}
