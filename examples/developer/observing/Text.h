#pragma once

#include <cstdint>
#include <string>

namespace zelvora::developer {

enum class Language : std::uint8_t { Korean, English };

/// A text in the languages of the panel.
struct Text {
    std::string korean;
    std::string english;

    [[nodiscard]] std::string const& in(Language language) const
    {
        return language == Language::Korean ? korean : english;
    }

    bool operator==(Text const&) const = default;
};

}
