#include "ZelvoraIOS/ZelvoraSDKError.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace zelvora {

namespace {

struct Attributes {
    std::string_view code;
    ZelvoraSDKErrorType type;
    std::string_view message;
};

// In the order of the cases. Hosts compare the codes, which follow no pattern.
constexpr std::array<Attributes, 8> attributesByCase { {
    { "E100", ZelvoraSDKErrorType::error, "네트워크 연결 오류 혹은 서버 상태 이상입니다. " },
    { "E200", ZelvoraSDKErrorType::error, "Zelvora 서버 내부 통신 에러가 발생했습니다. " },
    { "E300", ZelvoraSDKErrorType::error, "알 수 없는 오류가 발생했습니다. " },
    { "E001", ZelvoraSDKErrorType::error, "Shop ID가 초기화되지 않았습니다. API 연결 상태를 확인해주세요." },
    { "E002", ZelvoraSDKErrorType::error, "API Key(Media Key)가 누락되거나 유효하지 않습니다." },
    { "E003", ZelvoraSDKErrorType::error,
        "User Key가 누락되었습니다. SDK 초기화 시점에 올바른 사용자 키를 입력해야 합니다." },
    { "W001", ZelvoraSDKErrorType::warning,
        "광고 식별자(ADID) 수집에 실패했습니다. 기능은 작동하나 트래킹 정합성이 떨어질 수 있습니다." },
    { "E004", ZelvoraSDKErrorType::error, "SDK가 이미 초기화 중입니다. 이전 호출의 응답을 기다려주세요." },
} };

// In the order of the types.
constexpr std::array<std::string_view, 4> rawValues { "ERROR", "WARNING", "INFO", "DEBUG" };

Attributes const& attributes(ZelvoraSDKError::Case errorCase)
{
    return attributesByCase.at(static_cast<std::size_t>(errorCase));
}

bool takesDetail(ZelvoraSDKError::Case errorCase)
{
    return errorCase == ZelvoraSDKError::Case::networkError || errorCase == ZelvoraSDKError::Case::internalApiError
        || errorCase == ZelvoraSDKError::Case::otherError;
}

// Spaces and tabs only: a line break at the end belongs to the detail.
std::string trimmingBlanks(std::string const& text)
{
    constexpr std::string_view blanks = " \t";
    auto const first = text.find_first_not_of(blanks);
    auto const last = text.find_last_not_of(blanks);
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

}

std::string_view rawValue(ZelvoraSDKErrorType type)
{
    return rawValues.at(static_cast<std::size_t>(type));
}

std::optional<ZelvoraSDKErrorType> makeZelvoraSDKErrorType(std::string_view rawValue)
{
    auto const place = std::ranges::find(rawValues, rawValue) - rawValues.begin();
    if (place == std::ssize(rawValues))
        return std::nullopt;
    return static_cast<ZelvoraSDKErrorType>(place);
}

ZelvoraSDKError ZelvoraSDKError::networkError(Detail detail)
{
    return ZelvoraSDKError(Case::networkError, std::move(detail));
}

ZelvoraSDKError ZelvoraSDKError::internalApiError(Detail detail)
{
    return ZelvoraSDKError(Case::internalApiError, std::move(detail));
}

ZelvoraSDKError ZelvoraSDKError::otherError(Detail detail)
{
    return ZelvoraSDKError(Case::otherError, std::move(detail));
}

ZelvoraSDKError ZelvoraSDKError::shopIdNotInitialized()
{
    return ZelvoraSDKError(Case::shopIdNotInitialized);
}
ZelvoraSDKError ZelvoraSDKError::mediaKeyNotInitialized()
{
    return ZelvoraSDKError(Case::mediaKeyNotInitialized);
}
ZelvoraSDKError ZelvoraSDKError::userKeyNotInitialized()
{
    return ZelvoraSDKError(Case::userKeyNotInitialized);
}
ZelvoraSDKError ZelvoraSDKError::adIdNotInitialized()
{
    return ZelvoraSDKError(Case::adIdNotInitialized);
}
ZelvoraSDKError ZelvoraSDKError::initializing()
{
    return ZelvoraSDKError(Case::initializing);
}

std::string_view ZelvoraSDKError::code() const
{
    return attributes(m_case).code;
}
ZelvoraSDKErrorType ZelvoraSDKError::errorType() const
{
    return attributes(m_case).type;
}

std::optional<std::string> ZelvoraSDKError::errorDescription() const
{
    std::string message(attributes(m_case).message);
    if (!takesDetail(m_case))
        return message;
    return trimmingBlanks(message + m_detail.value_or(""));
}

}
