#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

// What `@autoreleasepool` calls.
extern "C" void* objc_autoreleasePoolPush(void);
extern "C" void objc_autoreleasePoolPop(void* pool);

// The runtime keeps what it loads, and what objects hold is no leak to the checker: lifetimes have tests of their own.
extern "C" char const* __asan_default_options(void)
{
    return "detect_leaks=0";
}

namespace {

/// A pool for each test, so that at the end of one nothing is left of it.
class PoolForEachTest final : public testing::EmptyTestEventListener {
public:
    // testing::TestEventListener
    void OnTestStart(testing::TestInfo const&) override { m_pool = objc_autoreleasePoolPush(); }
    void OnTestEnd(testing::TestInfo const&) override { objc_autoreleasePoolPop(m_pool); }

private:
    void* m_pool = nullptr;
};

}

int main(int argc, char** argv)
{
    @autoreleasepool {
        testing::InitGoogleTest(&argc, argv);
        testing::UnitTest::GetInstance()->listeners().Append(new PoolForEachTest);
        return RUN_ALL_TESTS();
    }
}
