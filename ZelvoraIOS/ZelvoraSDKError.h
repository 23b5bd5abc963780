#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvora {

/// How grave an error is. Each case below is an error but `adIdNotInitialized`, a warning; the others are for the
/// host's own use.
enum class ZelvoraSDKErrorType : std::uint8_t { error, warning, info, debug };

/// "ERROR", "WARNING", "INFO" or "DEBUG".
[[nodiscard]] ZELVORA_API std::string_view rawValue(ZelvoraSDKErrorType type);
/// The type with that raw value, compared exactly; absent for any other text.
[[nodiscard]] ZELVORA_API std::optional<ZelvoraSDKErrorType> makeZelvoraSDKErrorType(std::string_view rawValue);

/// What a public operation reports when it fails. Immutable; any thread.
class ZELVORA_API ZelvoraSDKError final {
public:
    /// Hosts may make them all. The SDK itself never reports `networkError`, as a failure of the network is an
    /// `internalApiError`, nor `adIdNotInitialized`, as it goes on without the advertising id.
    enum class Case : std::uint8_t {
        networkError,
        internalApiError,
        otherError,
        shopIdNotInitialized,
        mediaKeyNotInitialized,
        userKeyNotInitialized,
        adIdNotInitialized,
        initializing
    };
    using Detail = std::optional<std::string>;

    [[nodiscard]] static ZelvoraSDKError networkError(Detail detail = std::nullopt);
    [[nodiscard]] static ZelvoraSDKError internalApiError(Detail detail = std::nullopt);
    [[nodiscard]] static ZelvoraSDKError otherError(Detail detail = std::nullopt);
    [[nodiscard]] static ZelvoraSDKError shopIdNotInitialized();
    [[nodiscard]] static ZelvoraSDKError mediaKeyNotInitialized();
    [[nodiscard]] static ZelvoraSDKError userKeyNotInitialized();
    [[nodiscard]] static ZelvoraSDKError adIdNotInitialized();
    [[nodiscard]] static ZelvoraSDKError initializing();

    /// For `switch`.
    [[nodiscard]] Case errorCase() const { return m_case; }
    /// Present at the most for `networkError`, `internalApiError` and `otherError`.
    [[nodiscard]] Detail const& detail() const { return m_detail; }

    /// Fixed for each case, for the host to match on: "E100", "W001" and so on.
    [[nodiscard]] std::string_view code() const;
    [[nodiscard]] ZelvoraSDKErrorType errorType() const;
    /// A Korean text for people, ending in the detail where there is one. Always present.
    [[nodiscard]] std::optional<std::string> errorDescription() const;

    bool operator==(ZelvoraSDKError const&) const = default;

private:
    explicit ZelvoraSDKError(Case errorCase, Detail detail = std::nullopt)
        : m_case(errorCase)
        , m_detail(std::move(detail))
    {
    }

    Case m_case;
    Detail m_detail;
};

}
