#pragma once

#include "examples/developer/observing/Json.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::developer {

enum class Verb : std::uint8_t {
    Open,
    WaitForText,
    WaitForElement,
    WaitUntil,
    Tap,
    Type,
    Run,
    SwipeBack,
    Upload,
    Reload,
    KillPage,
    Footer,
    Switch,
    Pass,
    Patience,
    Show,
    Picture,
    ExpectMessage,
    ExpectDropped,
    ExpectNothingDropped,
    ExpectAnswer,
    ExpectStored,
    ExpectNotStored,
    ExpectExpiry,
    ExpectQueue,
    ExpectEvent,
    ExpectUpload,
    ExpectPage,
    ExpectAction,
    ExpectFooter,
    ExpectClosed,
};

/// One line of a script.
struct Step {
    Verb verb = Verb::Open;
    std::size_t line = 0;
    /// The line as it is written, without the space around it.
    std::string source;
    /// What stands for the words in capitals of its form, in their order, and the words chosen from several; without
    /// those that are numbers or JSON.
    std::vector<std::string> words;
    /// A number, or the seconds of a duration.
    std::optional<double> number;
    std::optional<Json> json;
};

using Script = std::vector<Step>;

/// Why a script cannot be read.
struct ScriptError {
    std::size_t line = 0;
    std::string sentence;

    bool operator==(ScriptError const&) const = default;
};

/// Reads a script: one step a line; empty lines and those that begin with "#" are left out.
[[nodiscard]] std::expected<Script, ScriptError> readScript(std::string_view text);

/// The forms of all lines, in the order in which they are explained.
[[nodiscard]] std::vector<std::string_view> scriptForms();

}
