#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace zelvora::tests {

/// Skips the running test if it is among these, and says why. Call it in a harness's constructor.
inline void leaveOut(std::map<std::string, std::string> const& reasons)
{
    auto const found = reasons.find(testing::UnitTest::GetInstance()->current_test_info()->name());
    if (found != reasons.end())
        GTEST_SKIP() << found->second;
}

}
