#include "ZelvoraIOS/ZelvoraSDKError.h"

#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

namespace zelvora::tests {

namespace {

constexpr char const* networkText = "네트워크 연결 오류 혹은 서버 상태 이상입니다.";
constexpr char const* internalText = "Zelvora 서버 내부 통신 에러가 발생했습니다.";
constexpr char const* otherText = "알 수 없는 오류가 발생했습니다.";

std::vector<ZelvoraSDKError> everyError()
{
    return { ZelvoraSDKError::networkError(), ZelvoraSDKError::internalApiError(), ZelvoraSDKError::otherError(),
        ZelvoraSDKError::shopIdNotInitialized(), ZelvoraSDKError::mediaKeyNotInitialized(),
        ZelvoraSDKError::userKeyNotInitialized(), ZelvoraSDKError::adIdNotInitialized(),
        ZelvoraSDKError::initializing() };
}

TEST(ZelvoraSDKErrorTest, ANetworkErrorIsE100WithItsText)
{
    auto const error = ZelvoraSDKError::networkError();
    EXPECT_EQ(error.code(), "E100");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), networkText);
}

TEST(ZelvoraSDKErrorTest, AnInternalApiErrorIsE200WithItsText)
{
    auto const error = ZelvoraSDKError::internalApiError();
    EXPECT_EQ(error.code(), "E200");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), internalText);
}

TEST(ZelvoraSDKErrorTest, AnotherErrorIsE300WithItsText)
{
    auto const error = ZelvoraSDKError::otherError();
    EXPECT_EQ(error.code(), "E300");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), otherText);
}

TEST(ZelvoraSDKErrorTest, AMissingShopIdIsE001WithItsText)
{
    auto const error = ZelvoraSDKError::shopIdNotInitialized();
    EXPECT_EQ(error.code(), "E001");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), "Shop ID가 초기화되지 않았습니다. API 연결 상태를 확인해주세요.");
}

TEST(ZelvoraSDKErrorTest, AMissingMediaKeyIsE002WithItsText)
{
    auto const error = ZelvoraSDKError::mediaKeyNotInitialized();
    EXPECT_EQ(error.code(), "E002");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), "API Key(Media Key)가 누락되거나 유효하지 않습니다.");
}

TEST(ZelvoraSDKErrorTest, AMissingUserKeyIsE003WithItsText)
{
    auto const error = ZelvoraSDKError::userKeyNotInitialized();
    EXPECT_EQ(error.code(), "E003");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(
        error.errorDescription(), "User Key가 누락되었습니다. SDK 초기화 시점에 올바른 사용자 키를 입력해야 합니다.");
}

TEST(ZelvoraSDKErrorTest, AMissingAdvertisingIdIsTheOnlyWarningW001WithItsText)
{
    auto const error = ZelvoraSDKError::adIdNotInitialized();
    EXPECT_EQ(error.code(), "W001");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::warning);
    EXPECT_EQ(error.errorDescription(),
        "광고 식별자(ADID) 수집에 실패했습니다. 기능은 작동하나 트래킹 정합성이 떨어질 수 있습니다.");
}

TEST(ZelvoraSDKErrorTest, ACallMadeWhileInitializingIsE004WithItsText)
{
    auto const error = ZelvoraSDKError::initializing();
    EXPECT_EQ(error.code(), "E004");
    EXPECT_EQ(error.errorType(), ZelvoraSDKErrorType::error);
    EXPECT_EQ(error.errorDescription(), "SDK가 이미 초기화 중입니다. 이전 호출의 응답을 기다려주세요.");
}

TEST(ZelvoraSDKErrorTest, EveryErrorHasADescription)
{
    for (auto const& error : everyError())
        EXPECT_TRUE(error.errorDescription()) << error.code();
}

TEST(ZelvoraSDKErrorTest, ADetailFollowsTheTextAfterOneBlank)
{
    EXPECT_EQ(ZelvoraSDKError::internalApiError("fetchShopId - 500").errorDescription(),
        std::string(internalText) + " fetchShopId - 500");
    EXPECT_EQ(ZelvoraSDKError::networkError("offline").errorDescription(), std::string(networkText) + " offline");
    EXPECT_EQ(ZelvoraSDKError::otherError("x").errorDescription(), std::string(otherText) + " x");
}

TEST(ZelvoraSDKErrorTest, ADetailIsKeptAsGivenWhileTheDescriptionIsTrimmed)
{
    auto const error = ZelvoraSDKError::otherError("  x  ");
    EXPECT_EQ(error.detail(), "  x  ");
    EXPECT_EQ(error.errorDescription(), std::string(otherText) + "   x");
}

TEST(ZelvoraSDKErrorTest, BlanksAndTabsAtTheEndOfADetailAreTrimmed)
{
    EXPECT_EQ(ZelvoraSDKError::otherError("x \t \t").errorDescription(), std::string(otherText) + " x");
}

TEST(ZelvoraSDKErrorTest, ADetailOfBlanksAndTabsLeavesTheTextAlone)
{
    EXPECT_EQ(ZelvoraSDKError::otherError(" \t ").errorDescription(), otherText);
}

TEST(ZelvoraSDKErrorTest, AnEmptyDetailReadsLikeNoDetail)
{
    EXPECT_EQ(ZelvoraSDKError::networkError("").errorDescription(), networkText);
}

TEST(ZelvoraSDKErrorTest, ALineFeedAtTheEndOfADetailStays)
{
    EXPECT_EQ(ZelvoraSDKError::otherError("x\n").errorDescription(), std::string(otherText) + " x\n");
    EXPECT_EQ(ZelvoraSDKError::otherError("x\r\n").errorDescription(), std::string(otherText) + " x\r\n");
}

TEST(ZelvoraSDKErrorTest, BlanksBeforeALineFeedAtTheEndStayToo)
{
    EXPECT_EQ(ZelvoraSDKError::otherError("x \n ").errorDescription(), std::string(otherText) + " x \n");
}

TEST(ZelvoraSDKErrorTest, ErrorsAreEqualIfCaseAndDetailAreEqual)
{
    EXPECT_EQ(ZelvoraSDKError::networkError("a"), ZelvoraSDKError::networkError("a"));
    EXPECT_NE(ZelvoraSDKError::networkError("a"), ZelvoraSDKError::networkError("b"));
    EXPECT_NE(ZelvoraSDKError::networkError("a"), ZelvoraSDKError::networkError());
    EXPECT_NE(ZelvoraSDKError::networkError("a"), ZelvoraSDKError::otherError("a"));
}

TEST(ZelvoraSDKErrorTest, NoTwoErrorsShareACaseOrACode)
{
    auto const errors = everyError();
    std::unordered_set<std::string_view> codes;
    std::unordered_set<ZelvoraSDKError::Case> cases;
    for (auto const& error : errors) {
        codes.insert(error.code());
        cases.insert(error.errorCase());
    }
    EXPECT_EQ(codes.size(), errors.size());
    EXPECT_EQ(cases.size(), errors.size());
}

TEST(ZelvoraSDKErrorTypeTest, TheRawValuesAreUpperCaseWords)
{
    EXPECT_EQ(rawValue(ZelvoraSDKErrorType::error), "ERROR");
    EXPECT_EQ(rawValue(ZelvoraSDKErrorType::warning), "WARNING");
    EXPECT_EQ(rawValue(ZelvoraSDKErrorType::info), "INFO");
    EXPECT_EQ(rawValue(ZelvoraSDKErrorType::debug), "DEBUG");
}

TEST(ZelvoraSDKErrorTypeTest, ATypeIsMadeFromItsRawValue)
{
    EXPECT_EQ(makeZelvoraSDKErrorType("ERROR"), ZelvoraSDKErrorType::error);
    EXPECT_EQ(makeZelvoraSDKErrorType("WARNING"), ZelvoraSDKErrorType::warning);
    EXPECT_EQ(makeZelvoraSDKErrorType("INFO"), ZelvoraSDKErrorType::info);
    EXPECT_EQ(makeZelvoraSDKErrorType("DEBUG"), ZelvoraSDKErrorType::debug);
}

TEST(ZelvoraSDKErrorTypeTest, AnUnknownRawValueMakesNoType)
{
    for (auto const* text : { "info", "Info", "", " INFO", "INFO ", "FAULT" })
        EXPECT_FALSE(makeZelvoraSDKErrorType(text)) << text;
}

TEST(ZelvoraSDKErrorTypeTest, TypesCanBeKeptInAHashSet)
{
    std::unordered_set<ZelvoraSDKErrorType> const types { ZelvoraSDKErrorType::info, ZelvoraSDKErrorType::info };
    EXPECT_EQ(types.size(), 1U);
    EXPECT_TRUE(types.contains(ZelvoraSDKErrorType::info));
}

}

}
