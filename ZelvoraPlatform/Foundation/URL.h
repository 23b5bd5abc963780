#pragma once

#include "ZelvoraPlatform/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace zelvora::platform {

/// A URL (RFC 3986) as text. Two URLs are equal if their texts are: nothing is normalized.
class ZELVORA_API URL final {
public:
    /// Reads text as the phone's current system does. Bytes that a URL cannot contain, such as those of spaces and
    /// non-ASCII letters, are percent-encoded. Existing escapes are kept, unless a '%' in the same component begins
    /// none: then every '%' of that component is encoded. Absent if the text is empty or its host or port is malformed.
    [[nodiscard]] static std::optional<URL> parse(std::string_view text);
    /// Takes an address from an engine or a loader as it is: each has its own rules of encoding, and what it reports is
    /// what it loads. Absent if the text is empty.
    [[nodiscard]] static std::optional<URL> verbatim(std::string_view text);

    /// The whole text, encoded if the URL was parsed.
    [[nodiscard]] std::string const& absoluteString() const { return m_absoluteString; }
    /// The scheme as written, without the colon; absent if the URL is relative.
    [[nodiscard]] std::optional<std::string> scheme() const;

    bool operator==(URL const&) const = default;

private:
    explicit URL(std::string absoluteString) : m_absoluteString(std::move(absoluteString)) { }

    std::string m_absoluteString;
};

}
