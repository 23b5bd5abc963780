#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::simulation {

/// What can happen in a world. Each is one step.
enum class Act : std::uint8_t {
    // The system
    RunMain,
    RunGlobal,
    RunLoader,
    RunAll,
    LetTimePass,
    SetClock,
    AnswerRequest,
    AnswerPrompt,
    BecomeActive,
    BecomeInactive,
    EndWebProcess,
    EndApp,
    EndAppInWrite,
    // The host
    Initialize,
    Start,
    CreateWebView,
    DropWebView,
    PushScreen,
    PopScreen,
    DismissAll,
    ShowFooter,
    AddAction,
    Upload,
    UseStorage,
    ChangeDelegate,
    ChangeNavigationHandler,
    ChangeSwipeBack,
    // The user and the page
    SwipeBack,
    PostMessage,
    Navigate,
    NavigateFrame,
    Look
};
inline constexpr std::size_t actCount = static_cast<std::size_t>(Act::Look) + 1;

[[nodiscard]] std::string_view nameOf(Act act);

/// One step: what happens, and the dice that decide its details. Where the world does not allow it (there is no request
/// to answer), nothing happens; so a story stays a story when steps are left out.
struct Step {
    Act act = Act::RunMain;
    std::uint64_t dice = 0;
};

/// What a world begins with, and all that happens in it.
struct Story {
    std::uint64_t seed = 0;
    std::vector<Step> steps;
};

/// The story that follows from the seed. Every world prefers some acts over others, so that together they reach states
/// that an even mixture does not.
[[nodiscard]] Story makeStory(std::uint64_t seed, std::size_t length);

}
