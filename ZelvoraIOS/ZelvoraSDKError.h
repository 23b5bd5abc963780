#pragma once

#include "ZelvoraPlatform/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace zelvora {

/// The severity of an error. The SDK's own errors are of type `error`, except `adIdNotInitialized`, which is a
/// `warning`. `info` and `debug` are for the host's own use.
enum class ZelvoraSDKErrorType : std::uint8_t { error, warning, info, debug };

/// "ERROR", "WARNING", "INFO" or "DEBUG".
[[nodiscard]] ZELVORA_API std::string_view rawValue(ZelvoraSDKErrorType type);
/// The type with this raw value, compared case-sensitively; absent if there is none.
[[nodiscard]] ZELVORA_API std::optional<ZelvoraSDKErrorType> makeZelvoraSDKErrorType(std::string_view rawValue);

/// What a public operation reports when it fails. Immutable, so that any thread may read it.
///
///     if (auto const result = sdk.start(screen); !result && result.error().code() == "E001")
///         showOffline(*result.error().errorDescription());
class ZELVORA_API ZelvoraSDKError final {
public:
    /// The SDK itself never reports `networkError`, because it reports a network failure as `internalApiError`, nor
    /// `adIdNotInitialized`, because it works without an advertising id. Hosts may create any case.
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
    /// What went wrong, in English, if there is more to say than the case.
    using Detail = std::optional<std::string>;

    /// "E100".
    [[nodiscard]] static ZelvoraSDKError networkError(Detail detail = std::nullopt);
    /// "E200": the lookup of the shop id failed, for lack of a network too.
    [[nodiscard]] static ZelvoraSDKError internalApiError(Detail detail = std::nullopt);
    /// "E300": `start` was given no view controller.
    [[nodiscard]] static ZelvoraSDKError otherError(Detail detail = std::nullopt);
    /// "E001": no lookup has found a shop id.
    [[nodiscard]] static ZelvoraSDKError shopIdNotInitialized();
    /// "E002": there is no API key.
    [[nodiscard]] static ZelvoraSDKError mediaKeyNotInitialized();
    /// "E003": there is no user key.
    [[nodiscard]] static ZelvoraSDKError userKeyNotInitialized();
    /// "W001".
    [[nodiscard]] static ZelvoraSDKError adIdNotInitialized();
    /// "E004": an earlier initialization is still running.
    [[nodiscard]] static ZelvoraSDKError initializing();

    /// The case, to switch on.
    [[nodiscard]] Case errorCase() const { return m_case; }
    /// What went wrong, in English. Only `networkError`, `internalApiError` and `otherError` may have a detail.
    [[nodiscard]] Detail const& detail() const { return m_detail; }

    /// A fixed code for each case, such as "E100" or "W001", for the host to compare with.
    [[nodiscard]] std::string_view code() const;
    /// A warning for `adIdNotInitialized`, an error for every other case.
    [[nodiscard]] ZelvoraSDKErrorType errorType() const;
    /// A Korean text for the user, followed by the detail if there is one. Never absent.
    [[nodiscard]] std::optional<std::string> errorDescription() const;

    /// Equal are the same cases with the same details.
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
