#include "tests/architecture/Layers.h"

#include "tests/architecture/SourceText.h"
#include "tests/support/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <regex>
#include <set>
#include <string_view>

namespace zelvora::architecture {

namespace {

enum class AngledIncludes : std::uint8_t { StandardOnly, Any };

enum class SiblingIncludes : std::uint8_t { WithTheirFolder, ByNameAlone };

struct Layer {
    std::string folder;
    std::vector<std::string> mayInclude;
    AngledIncludes angledIncludes = AngledIncludes::StandardOnly;
    SiblingIncludes siblingIncludes = SiblingIncludes::WithTheirFolder;
};

std::set<std::string, std::less<>> const& standardHeaders()
{
    static std::set<std::string, std::less<>> const headers { "algorithm", "any", "array", "atomic", "barrier", "bit",
        "bitset", "cassert", "cctype", "cerrno", "cfenv", "cfloat", "charconv", "chrono", "cinttypes", "climits",
        "clocale", "cmath", "codecvt", "compare", "complex", "concepts", "condition_variable", "coroutine", "csetjmp",
        "csignal", "cstdarg", "cstddef", "cstdint", "cstdio", "cstdlib", "cstring", "ctime", "cuchar", "cwchar",
        "cwctype", "deque", "exception", "execution", "expected", "filesystem", "forward_list", "fstream", "functional",
        "future", "initializer_list", "iomanip", "ios", "iosfwd", "iostream", "istream", "iterator", "latch", "limits",
        "list", "locale", "map", "memory", "memory_resource", "mutex", "new", "numbers", "numeric", "optional",
        "ostream", "queue", "random", "ranges", "ratio", "regex", "scoped_allocator", "semaphore", "set",
        "shared_mutex", "source_location", "span", "sstream", "stack", "stdexcept", "stop_token", "streambuf", "string",
        "string_view", "system_error", "thread", "tuple", "type_traits", "typeindex", "typeinfo", "unordered_map",
        "unordered_set", "utility", "valarray", "variant", "vector", "version" };
    return headers;
}

std::vector<Layer> layersOf(std::filesystem::path const& tree)
{
    std::vector<Layer> layers {
        { "ZelvoraPlatform", { "ZelvoraPlatform" }, AngledIncludes::StandardOnly },
        { "ZelvoraIOS", { "ZelvoraPlatform", "ZelvoraIOS" }, AngledIncludes::StandardOnly },
        // Installed for adapters outside of these sources, with a harness for the adapter in memory.
        { "ZelvoraContract", { "ZelvoraPlatform", "ZelvoraAdapters/memory", "ZelvoraContract" }, AngledIncludes::Any },
        // What a phone's host imports: the SDK in Objective-C and Swift, on the phone's adapter. Its public headers lie
        // in one folder of a framework, wherever that is.
        { "module", { "ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters/uikit", "module" }, AngledIncludes::Any,
            SiblingIncludes::ByNameAlone },
    };
    auto const adapters = tree / "ZelvoraAdapters";
    if (!std::filesystem::is_directory(adapters))
        return layers;
    for (auto const& entry : std::filesystem::directory_iterator(adapters)) {
        if (!entry.is_directory())
            continue;
        auto const folder = "ZelvoraAdapters/" + entry.path().filename().string();
        layers.push_back({ folder, { "ZelvoraPlatform", folder, "ZelvoraAdapters/shared" }, AngledIncludes::Any });
    }
    return layers;
}

bool isSource(std::filesystem::path const& file)
{
    static constexpr std::array<std::string_view, 5> extensions { ".h", ".hpp", ".cpp", ".m", ".mm" };
    // "A.h.in" is a header once the build has filled it in.
    auto const name = file.extension() == ".in" ? file.stem() : file;
    return std::ranges::find(extensions, name.extension().string()) != extensions.end();
}

std::optional<std::string> objectionTo(Include const& include, Layer const& layer)
{
    switch (include.kind) {
    case Include::Kind::Computed:
        return "an include must name its file, not " + include.name;
    case Include::Kind::Angled:
        if (layer.angledIncludes == AngledIncludes::Any || standardHeaders().contains(include.name))
            return std::nullopt;
        return layer.folder + " includes a header that is not of the standard library: <" + include.name + ">";
    case Include::Kind::Quoted:
        break;
    }
    auto const mayInclude = [&](std::string const& folder) { return include.name.starts_with(folder + "/"); };
    bool const climbs = include.name.find("..") != std::string::npos;
    bool const isSibling = include.name.find('/') == std::string::npos;
    if (isSibling && layer.siblingIncludes == SiblingIncludes::ByNameAlone)
        return std::nullopt;
    if (!climbs && std::ranges::any_of(layer.mayInclude, mayInclude))
        return std::nullopt;
    return layer.folder + " must not include \"" + include.name + "\"";
}

std::optional<std::string> objectionTo(GlobalDeclaration const& declaration)
{
    static std::regex const ourNamespace(R"((inline )?namespace zelvora(::\w+)*)");
    static std::regex const linkageToC(R"re(extern " *".*)re");
    static std::regex const declarationOfC(R"(typedef (struct|union|enum) \w+ \w+|struct \w+)");

    if (std::regex_match(declaration.head, linkageToC))
        return std::nullopt;
    bool const hasBody = declaration.ending == GlobalDeclaration::Ending::Brace;
    if (std::regex_match(declaration.head, hasBody ? ourNamespace : declarationOfC))
        return std::nullopt;
    return "not in the namespace zelvora: " + declaration.head;
}

// Objective-C declares its classes in the global namespace, where a phone's app looks for them.
bool mayDeclareGlobally(std::filesystem::path const& file, Layer const& layer)
{
    auto const extension = file.extension();
    return layer.folder == "ZelvoraAdapters/uikit" || layer.folder == "module" || extension == ".m"
        || extension == ".mm";
}

void surveyFile(std::filesystem::path const& file, std::string const& name, Layer const& layer, Survey& survey)
{
    auto const source = tests::bytesOf(file);
    ++survey.sourcesRead[layer.folder];
    for (auto const& include : includesOf(source)) {
        if (auto reason = objectionTo(include, layer))
            survey.violations.push_back({ name, include.line, *std::move(reason) });
    }
    if (mayDeclareGlobally(file, layer))
        return;
    for (auto const& declaration : globalDeclarationsOf(source)) {
        if (auto reason = objectionTo(declaration))
            survey.violations.push_back({ name, declaration.line, *std::move(reason) });
    }
}

}

Survey surveyLayers(std::filesystem::path const& tree)
{
    Survey survey;
    for (auto const& layer : layersOf(tree)) {
        auto const folder = tree / layer.folder;
        if (!std::filesystem::is_directory(folder))
            continue;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && isSource(entry.path()))
                surveyFile(entry.path(), entry.path().lexically_relative(tree).generic_string(), layer, survey);
        }
    }
    return survey;
}

}
