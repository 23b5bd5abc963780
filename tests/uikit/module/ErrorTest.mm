#include "tests/uikit/module/SurfaceTest.h"

#include <ostream>

namespace zelvora::tests {

namespace {

struct Expected {
    ZelvoraSDKErrorCode code;
    char const* text;
    char const* type;
    bool takesDetail;
};

// In the name of a test.
void PrintTo(Expected const& expected, std::ostream* stream)
{
    *stream << expected.text;
}

class ErrorTest : public testing::TestWithParam<Expected> { };

TEST_P(ErrorTest, HasItsCodeItsTypeAndItsText)
{
    NSError* const error = ZelvoraSDKErrorMake(GetParam().code, nil);
    EXPECT_EQ(textOf(error.domain), textOf(ZelvoraSDKErrorDomain));
    EXPECT_EQ(error.code, GetParam().code);
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorCodeKey]), GetParam().text);
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorTypeKey]), GetParam().type);
    EXPECT_EQ(error.userInfo[ZelvoraSDKErrorDetailKey], nil);
    EXPECT_EQ(textOf(error.localizedDescription), textOf(error.userInfo[NSLocalizedDescriptionKey]));
}

TEST_P(ErrorTest, HasADetailOnlyWhereThereMayBeOne)
{
    NSError* const error = ZelvoraSDKErrorMake(GetParam().code, @"why");
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorDetailKey]), GetParam().takesDetail ? "why" : "nil");
    EXPECT_EQ(textOf(error.localizedDescription).ends_with(" why"), GetParam().takesDetail);
}

INSTANTIATE_TEST_SUITE_P(Cases, ErrorTest,
    testing::Values(Expected { ZelvoraSDKErrorNetworkError, "E100", "ERROR", true },
        Expected { ZelvoraSDKErrorInternalApiError, "E200", "ERROR", true },
        Expected { ZelvoraSDKErrorOtherError, "E300", "ERROR", true },
        Expected { ZelvoraSDKErrorShopIdNotInitialized, "E001", "ERROR", false },
        Expected { ZelvoraSDKErrorMediaKeyNotInitialized, "E002", "ERROR", false },
        Expected { ZelvoraSDKErrorUserKeyNotInitialized, "E003", "ERROR", false },
        Expected { ZelvoraSDKErrorAdIdNotInitialized, "W001", "WARNING", false },
        Expected { ZelvoraSDKErrorInitializing, "E004", "ERROR", false }),
    [](auto const& info) { return std::string(info.param.text); });

TEST(ErrorMakingTest, ItsTextIsTheSDKs)
{
    EXPECT_EQ(textOf(ZelvoraSDKErrorMake(ZelvoraSDKErrorOtherError, @"  x  ").localizedDescription),
        "알 수 없는 오류가 발생했습니다.   x");
    EXPECT_EQ(textOf(ZelvoraSDKErrorMake(ZelvoraSDKErrorInitializing, nil).localizedDescription),
        "SDK가 이미 초기화 중입니다. 이전 호출의 응답을 기다려주세요.");
}

TEST(ErrorMakingTest, ACodeThatTheSDKDoesNotHaveIsAnOtherError)
{
    NSError* const error = ZelvoraSDKErrorMake(static_cast<ZelvoraSDKErrorCode>(99), @"why");
    EXPECT_EQ(error.code, ZelvoraSDKErrorOtherError);
    EXPECT_EQ(textOf(error.userInfo[ZelvoraSDKErrorDetailKey]), "why");
}

}

}
