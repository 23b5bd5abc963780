#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"
#include "examples/developer/observing/Json.h"
#include "examples/developer/observing/MessageOutcome.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::developer {

/// A message that a page posted, and what became of it.
struct MessageRecord {
    platform::Date time;
    /// Empty if the message has none.
    std::string action;
    Json body;
    Outcome outcome;
    /// What the page is answered with.
    std::optional<Json> answer;
    /// Whether the main frame had no function of the name that was to be called with the answer.
    bool isAnswerLost = false;
};

/// A batch of events on its way to the collector, or there.
struct UploadRecord {
    platform::Date time;
    std::uint64_t request = 0;
    Json events;
    /// The collector's answer.
    std::optional<int> status;
    std::string body;
    /// Why there is no answer.
    std::optional<std::string> error;

    [[nodiscard]] bool isOver() const { return status || error; }
};

/// A call of one of the app's own actions.
struct ActionRecord {
    std::string name;
    std::optional<std::string> data;
};

/// What happened since the start, oldest first.
struct Records {
    std::vector<MessageRecord> messages;
    std::vector<UploadRecord> uploads;
    /// The addresses that the app was told of.
    std::vector<std::string> navigations;
    std::vector<ActionRecord> actions;
    /// What the SDK and the engine complained of outside of any message.
    std::vector<std::string> complaints;
};

}
