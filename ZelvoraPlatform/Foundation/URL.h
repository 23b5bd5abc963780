#pragma once

#include "ZelvoraPlatform/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace zelvora::platform {

/// A parsed URL (RFC 3986), read as the phone's current system does: what a URL cannot hold, such as blanks or letters
/// outside ASCII, is percent-encoded; text that still forms no URL, the empty one included, is refused.
class ZELVORA_API URL final {
public:
    [[nodiscard]] static std::optional<URL> parse(std::string_view text);
    /// An address that an engine or a loader reports, as it stands: engines encode by rules of their own, and what
    /// they load is what they report. Only the empty text is refused.
    [[nodiscard]] static std::optional<URL> verbatim(std::string_view text);

    /// The whole URL, encoded.
    [[nodiscard]] std::string const& absoluteString() const { return m_absoluteString; }
    /// The scheme as written, without the colon; absent for a relative reference.
    [[nodiscard]] std::optional<std::string> scheme() const;

    bool operator==(URL const&) const = default;

private:
    explicit URL(std::string absoluteString) : m_absoluteString(std::move(absoluteString)) { }

    std::string m_absoluteString;
};

}
