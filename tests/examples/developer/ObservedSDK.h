#pragma once

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "examples/developer/observing/ObservedPlatform.h"
#include "examples/developer/observing/Recorder.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvora::developer {

/// The SDK on a platform in memory that is observed. Each test runs in its own process.
class ObservedSDK : public testing::Test {
protected:
    ObservedSDK();

    /// Initializes the SDK and opens the shop over a screen.
    void open();
    /// Posts to the bridge from the page, and lets the SDK do what it puts off.
    void post(platform::Value body);
    void runUntilIdle() { memory.runUntilIdle(); }

    [[nodiscard]] Records const& records() const { return recorder.records(); }
    /// What became of the latest message.
    [[nodiscard]] Outcome const& outcome() const { return records().messages.back().outcome; }
    [[nodiscard]] std::string explanation() const { return outcome().explanation.english; }

    static constexpr char const* trackingEndpoint = "https://collector.zelvora.example/v1/events";

    memory::Platform& memory;
    Recorder recorder;
    ObservedPlatform& observed;
};

}
