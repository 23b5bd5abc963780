#pragma once

#include "examples/service/Http.h"

#include <filesystem>
#include <string_view>

namespace zelvora::examples {

/// A file below the directory. It is read at every request, so that a page can be edited while the service runs.
/// A path that leads out of the directory, or to a hidden file, is refused.
[[nodiscard]] Reply readPage(std::filesystem::path const& directory, std::string_view path);

/// The shopping site. All shops have the same pages; the first label of the host name is the shop id. `profile` is the
/// environment that a page is told: "prd" or "dev". Below "page-bridge/" is the package for page authors, as a bundle
/// of modules, unless the site has such a file of its own.
[[nodiscard]] Reply answerShop(std::filesystem::path const& pages, std::string_view profile, Request const& request);
/// A site of another origin, whose pages the shop embeds in frames. It has the package as well.
[[nodiscard]] Reply answerFrames(std::filesystem::path const& pages, Request const& request);

/// A shop whose pages are on another server: the first page leads to the address, with the query of the entry.
[[nodiscard]] Reply leadElsewhere(std::string_view address, Request const& request);

}
