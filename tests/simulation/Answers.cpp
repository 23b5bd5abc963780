#include "tests/simulation/Answers.h"

#include "ZelvoraAdapters/memory/Foundation/URLSession.h"

#include <array>

namespace zelvora::simulation {

using platform::URLSession;

namespace {

Model::Answer answer(int status, std::string body)
{
    return URLSession::Answer { { std::move(body) }, { status } };
}

Model::Answer failure(Random& random)
{
    switch (random.below(4)) {
    case 0:
        return std::unexpected(memory::URLSession::timedOut());
    case 1:
        return std::unexpected(memory::URLSession::notConnected());
    case 2:
        return std::unexpected(platform::Error { "NSURLErrorDomain", -1005, " The connection was cut. \t" });
    default:
        return std::unexpected(platform::Error { "NSURLErrorDomain", -1200, "" });
    }
}

std::string makeBody(Random& random)
{
    static constexpr std::array<char const*, 6> bodies { "", "oops", "{\"data\": 1}", "\xFF\xFE", "두 줄\n", "[]" };
    return random.pick(bodies);
}

}

Model::Answer makeLookupAnswer(Random& random)
{
    static constexpr std::array<char const*, 6> found { R"({"data": {"shopId": "shop-1"}})",
        R"({"data": {"shopId": "shop-2", "more": [1]}, "x": null})", R"({"data": {"shopId": ""}})",
        R"({"data": {"shopId": "a b"}})", R"({"data": {"shopId": "가게"}})", R"({"data": {"shopId": "shop-1"}})" };
    static constexpr std::array<char const*, 7> misshapen { R"({"data": {"shopId": 42}})", "{}", R"({"data": []})",
        "[1]", "7", "{\"data\"", "\xFF" };
    static constexpr std::array<int, 8> otherStatuses { 500, 201, 204, 404, 301, 401, 100, 599 };
    if (!random.oneIn(3))
        return answer(200, random.pick(found));
    switch (random.below(4)) {
    case 0:
        return answer(200, random.pick(misshapen));
    case 1:
        return answer(random.pick(otherStatuses), makeBody(random));
    case 2:
        return URLSession::Answer { { makeBody(random) }, { std::nullopt } };
    default:
        return failure(random);
    }
}

Model::Answer makeUploadAnswer(Random& random)
{
    static constexpr std::array<int, 6> accepted { 200, 200, 201, 204, 250, 299 };
    static constexpr std::array<int, 7> refused { 199, 300, 400, 413, 500, 503, -5 };
    if (random.oneIn(2))
        return answer(random.pick(accepted), makeBody(random));
    if (random.oneIn(2))
        return failure(random);
    if (random.oneIn(5))
        return URLSession::Answer { { makeBody(random) }, { std::nullopt } };
    return answer(random.pick(refused), makeBody(random));
}

}
