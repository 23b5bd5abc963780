#pragma once

#include "ZelvoraAdapters/memory/Platform.h"

#include <gtest/gtest.h>

namespace zelvora::tests {

/// A fresh platform in memory; each test runs in its own process.
class InstalledPlatform : public ::testing::Test {
protected:
    memory::Platform& platform = memory::install();
    memory::Screen& screen = platform.screen();
};

}
