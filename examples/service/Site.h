#pragma once

#include "examples/service/Http.h"
#include "examples/service/StaticFiles.h"

#include <string>

namespace zelvora::examples {

class ShopDirectory;

/// The shopping site: one shop per host name, all of them with the same pages.
class Site final : public Endpoint {
public:
    /// `hostSuffix` is what follows the shop id in the host names of this environment.
    Site(std::filesystem::path directory, ShopDirectory const& shops, std::string hostSuffix, std::string profile);

    Reply answer(Request const& request) override;

private:
    StaticFiles m_pages;
    ShopDirectory const& m_shops;
    std::string m_hostSuffix;
    std::string m_profile;
};

/// The other origin, whose pages the shop embeds in frames.
class Frames final : public Endpoint {
public:
    explicit Frames(std::filesystem::path directory);

    Reply answer(Request const& request) override;

private:
    StaticFiles m_pages;
};

} // namespace zelvora::examples
