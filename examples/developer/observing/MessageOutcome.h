#pragma once

#include "ZelvoraPlatform/Foundation/Value.h"
#include "examples/developer/observing/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::developer {

/// What the SDK was seen to do while it handled one message.
struct Effects {
    /// Its lines in the log, of the kind "error".
    std::vector<std::string> errors {};
    /// What it answers with, as JavaScript.
    std::optional<std::string> answer {};
    /// The app's own action that it called.
    std::optional<std::string> action {};
    /// Whether it wrote a value, posted a notification or queued work for later.
    bool didChange = false;
};

enum class Verdict : std::uint8_t { Done, Answered, Dropped };

/// What became of a message.
struct Outcome {
    Verdict verdict = Verdict::Dropped;
    /// Why it was dropped and what to write instead, or what was done.
    Text explanation {};
    /// What the page's author may not expect, although the message was accepted.
    std::optional<Text> warning {};
};

/// What was seen decides whether the message was dropped; the message itself only tells why.
[[nodiscard]] Outcome judge(platform::Value const& body, Effects const& effects);

}
