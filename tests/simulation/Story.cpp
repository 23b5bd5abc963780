#include "tests/simulation/Story.h"

#include "tests/simulation/Random.h"

#include <array>
#include <numeric>

namespace zelvora::simulation {

namespace {

struct Kind {
    std::string_view name;
    std::size_t weight;
};

// In the order of the acts.
constexpr std::array<Kind, actCount> kinds { {
    { "RunMain", 70 },
    { "RunGlobal", 40 },
    { "RunLoader", 25 },
    { "RunAll", 50 },
    { "LetTimePass", 40 },
    { "SetClock", 3 },
    { "AnswerRequest", 70 },
    { "AnswerPrompt", 25 },
    { "BecomeActive", 10 },
    { "BecomeInactive", 5 },
    { "EndWebProcess", 4 },
    { "EndApp", 1 },
    { "EndAppInWrite", 1 },
    { "Initialize", 12 },
    { "Start", 25 },
    { "CreateWebView", 10 },
    { "DropWebView", 5 },
    { "PushScreen", 6 },
    { "PopScreen", 9 },
    { "DismissAll", 6 },
    { "ShowFooter", 12 },
    { "AddAction", 14 },
    { "Upload", 20 },
    { "UseStorage", 14 },
    { "ChangeDelegate", 4 },
    { "ChangeNavigationHandler", 6 },
    { "ChangeSwipeBack", 4 },
    { "SwipeBack", 40 },
    { "PostMessage", 220 },
    { "Navigate", 22 },
    { "NavigateFrame", 8 },
    { "Look", 14 },
} };

// What it takes until the shop is shown, if nothing comes in between.
constexpr std::array opening { Act::ChangeNavigationHandler, Act::Initialize, Act::RunAll, Act::LetTimePass,
    Act::RunAll, Act::AnswerPrompt, Act::AnswerRequest, Act::RunAll, Act::Start, Act::RunAll };

}

std::string_view nameOf(Act act)
{
    return kinds.at(static_cast<std::size_t>(act)).name;
}

Story makeStory(std::uint64_t seed, std::size_t length)
{
    Random random(seed);
    std::array<std::size_t, actCount> weights {};
    for (std::size_t act = 0; act < actCount; ++act) {
        constexpr std::array<std::size_t, 5> factors { 0, 1, 2, 2, 6 };
        weights.at(act) = kinds.at(act).weight * random.pick(factors);
    }
    // Without these a world stays empty.
    for (auto const act : { Act::RunMain, Act::Initialize, Act::Start, Act::PostMessage }) {
        auto& weight = weights.at(static_cast<std::size_t>(act));
        weight += kinds.at(static_cast<std::size_t>(act)).weight;
    }
    auto const sum = std::accumulate(weights.begin(), weights.end(), std::size_t { 0 });

    Story story { .seed = seed, .steps = {} };
    auto const open = [&] {
        for (auto const act : opening) {
            if (!random.oneIn(12))
                story.steps.push_back({ act, random.next() });
        }
    };
    if (!random.oneIn(4))
        open();
    while (story.steps.size() < length) {
        auto ticket = random.below(sum);
        std::size_t act = 0;
        while (ticket >= weights.at(act))
            ticket -= weights.at(act++);
        story.steps.push_back({ static_cast<Act>(act), random.next() });
        if (story.steps.back().act == Act::EndApp && !random.oneIn(3))
            open();
    }
    story.steps.resize(length);
    return story;
}

}
