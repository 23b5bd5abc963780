#include "examples/service/StaticFiles.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <utility>

namespace zelvora::examples {

namespace {

std::string contentTypeOf(std::filesystem::path const& file)
{
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> s_types { {
        { ".html", "text/html; charset=utf-8" },
        { ".css", "text/css; charset=utf-8" },
        { ".js", "text/javascript; charset=utf-8" },
        { ".json", "application/json" },
        { ".svg", "image/svg+xml" },
        { ".png", "image/png" },
    } };
    auto const extension = file.extension().string();
    auto const* const found = std::ranges::find(s_types, extension, &decltype(s_types)::value_type::first);
    return std::string(found == s_types.end() ? "application/octet-stream" : found->second);
}

bool staysBelow(std::filesystem::path const& directory, std::filesystem::path const& file)
{
    // A symbolic link may lead out of the directory even when the path itself does not.
    std::error_code failure;
    auto const realDirectory = std::filesystem::canonical(directory, failure);
    if (failure)
        return false;
    auto const realFile = std::filesystem::weakly_canonical(file, failure);
    return !failure && std::ranges::mismatch(realDirectory, realFile).in1 == realDirectory.end();
}

bool isPlain(std::filesystem::path const& path)
{
    return path.is_relative() && std::ranges::none_of(path, [](std::filesystem::path const& part) {
        return part.string().starts_with('.') || part.string().contains('\\');
    });
}

std::optional<std::string> contentsOf(std::filesystem::path const& file)
{
    if (!std::filesystem::is_regular_file(file))
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

} // namespace

StaticFiles::StaticFiles(std::filesystem::path directory) : m_directory(std::move(directory)) { }

Reply StaticFiles::read(std::string_view path) const
{
    std::filesystem::path const relative(
        path.empty() || path.ends_with('/') ? std::string(path) + "index.html" : std::string(path));
    auto const file = m_directory / relative;
    if (!isPlain(relative) || !staysBelow(m_directory, file))
        return errorReply(403, "this path leads out of the site");
    auto contents = contentsOf(file);
    if (!contents)
        return errorReply(404, "there is no such page");
    return { .status = 200,
        .contentType = contentTypeOf(file),
        .body = std::move(*contents),
        .headers = { { "Cache-Control", "no-cache" }, { "X-Content-Type-Options", "nosniff" } } };
}

} // namespace zelvora::examples
