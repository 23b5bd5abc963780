#include "tests/architecture/PublicHeaders.h"

#include "tests/architecture/SourceText.h"
#include "tests/support/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <regex>
#include <string>
#include <string_view>

namespace zelvora::architecture {

namespace {

enum class Audience : std::uint8_t { Hosts, Tree, Library };

struct Place {
    /// The folder of the library; empty for the examples and the benchmarks.
    std::string library;
    Audience audience = Audience::Library;
};

/// Absent for a header that is not ours.
std::optional<Place> placeOf(std::string const& file)
{
    static std::regex const ours(R"((ZelvoraPlatform|ZelvoraIOS|ZelvoraAdapters/gtk/GLib|ZelvoraAdapters/\w+)/(.+))");
    static std::regex const internal(R"((.*/)?internal/.*)");

    std::smatch match;
    if (!std::regex_match(file, match, ours))
        return std::nullopt;
    std::string const library = match[1];
    std::string const rest = match[2];
    if (library == "ZelvoraAdapters/gtk/GLib")
        return Place { library, Audience::Tree };
    bool const isInFolder = rest.find('/') != std::string::npos;
    // What a phone's host sees of its adapter is the module; no header of it is installed.
    if (std::regex_match(rest, internal) || (library == "ZelvoraAdapters/gtk" && isInFolder)
        || library == "ZelvoraAdapters/uikit")
        return Place { library, Audience::Library };
    return Place { library, Audience::Hosts };
}

std::optional<std::string> objectionTo(Include const& include, Place const& includer)
{
    auto const included = include.kind == Include::Kind::Quoted ? placeOf(include.name) : std::nullopt;
    if (!included || included->audience == Audience::Hosts)
        return std::nullopt;
    if (includer.audience == Audience::Hosts)
        return "a header for hosts must not include \"" + include.name + "\", which is not installed";
    if (included->audience == Audience::Library && included->library != includer.library)
        return "\"" + include.name + "\" is internal to " + included->library;
    return std::nullopt;
}

/// Classes at the beginning of a line, which are not nested; templates have nothing to export.
std::vector<Violation> unexportedClasses(std::string const& name, std::string const& source)
{
    static std::regex const definition(R"(class (\[\[\w+\]\] )?(\w+)( final)?( :.*)?( \{)?)");

    std::vector<Violation> violations;
    std::istringstream lines(source);
    std::string before;
    int number = 0;
    for (std::string line; std::getline(lines, line); before = line) {
        ++number;
        std::smatch match;
        bool const isTemplate = before.starts_with("template") || before.find("requires") != std::string::npos;
        if (!isTemplate && std::regex_match(line, match, definition))
            violations.push_back({ name, number, "a class for hosts must be ZELVORA_API: " + match[2].str() });
    }
    return violations;
}

void surveyFile(std::filesystem::path const& file, std::string const& name, HeaderSurvey& survey)
{
    auto const source = tests::bytesOf(file);
    auto place = placeOf(name).value_or(Place {});
    bool const isPublic = place.audience == Audience::Hosts && file.extension() == ".h";
    if (!isPublic)
        place.audience = Audience::Library;
    for (auto const& include : includesOf(source)) {
        if (auto reason = objectionTo(include, place))
            survey.violations.push_back({ name, include.line, *std::move(reason) });
    }
    if (!isPublic)
        return;
    ++survey.publicHeaders;
    std::ranges::move(unexportedClasses(name, source), std::back_inserter(survey.violations));
}

}

HeaderSurvey surveyPublicHeaders(std::filesystem::path const& tree)
{
    static constexpr std::array<std::string_view, 4> extensions { ".h", ".cpp", ".m", ".mm" };

    HeaderSurvey survey;
    for (auto const* top : { "ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters", "examples", "bench" }) {
        if (!std::filesystem::is_directory(tree / top))
            continue;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(tree / top)) {
            auto const extension = entry.path().extension().string();
            if (entry.is_regular_file() && std::ranges::find(extensions, extension) != extensions.end())
                surveyFile(entry.path(), entry.path().lexically_relative(tree).generic_string(), survey);
        }
    }
    return survey;
}

}
