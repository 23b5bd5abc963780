#include "ZelvoraAdapters/memory/Foundation/URLSession.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace zelvora::tests {

namespace {

using memory::URLSession;

class URLSessionTest : public ::testing::Test {
protected:
    static platform::URLRequest request(std::string const& path)
    {
        return { .url = *platform::URL::parse("https://example.com/" + path) };
    }

    void start(std::string const& path) { start(*session, path); }
    void start(URLSession& at, std::string const& path)
    {
        at.dataTask(request(path), [this, path](auto result) {
            told.push_back(path + ' ' + (result ? result->data.bytes : result.error().localizedDescription));
            status = result ? result->response.statusCode : std::nullopt;
        });
    }

    // Declared before the session, whose destructor still calls pending completions.
    std::vector<std::string> told;
    std::optional<int> status;
    memory::Clock clock;
    std::optional<URLSession> session { std::in_place, clock };
};

}

TEST_F(URLSessionTest, AnAnswerArrivesWhenTheLoadersQueueRuns)
{
    start("a");
    EXPECT_EQ(session->requests(), std::vector { request("a") });
    session->answer(404, "body");
    EXPECT_TRUE(told.empty());
    session->loaderQueue().runAll();
    EXPECT_EQ(told, std::vector<std::string> { "a body" });
    EXPECT_EQ(status, 404);
}

TEST_F(URLSessionTest, RequestsAreAnsweredOldestFirstOrByIndex)
{
    start("a");
    start("b");
    start("c");
    session->answer(200, "second", 1);
    session->answer(200, "first");
    session->answerNotHTTP("third");
    EXPECT_EQ(session->unansweredCount(), 0u);
    session->loaderQueue().runAll();
    EXPECT_EQ(told, (std::vector<std::string> { "b second", "a first", "c third" }));
    EXPECT_EQ(status, std::nullopt);
}

TEST_F(URLSessionTest, AFailureArrivesAsItsError)
{
    start("a");
    session->fail(URLSession::timedOut());
    session->loaderQueue().runAll();
    EXPECT_EQ(told, std::vector<std::string> { "a The request timed out." });
}

TEST_F(URLSessionTest, TheDestructorCallsEveryPendingCompletionOnce)
{
    start("answered");
    session->answer(200, "body");
    start("delivered");
    session->answer(200, "body");
    session->loaderQueue().runOne();
    // By the time it is called, the optional no longer has the session.
    session->dataTask(request("last"), [this, &ending = *session](auto result) {
        EXPECT_EQ(result.error(), URLSession::cancelled());
        start(ending, "after");
    });
    session.reset();
    EXPECT_EQ(told, (std::vector<std::string> { "answered body", "delivered body", "after cancelled" }));
}

TEST_F(URLSessionTest, AnsweringTwiceOrWithoutARequestStopsTheProcess)
{
    EXPECT_DEATH(session->answer(200), "never made or has its answer");
    start("a");
    EXPECT_DEATH(session->answer(200, "", 1), "never made or has its answer");
    session->answer(200, "", 0);
    EXPECT_DEATH(session->answer(200, "", 0), "never made or has its answer");
}

TEST_F(URLSessionTest, RequestsMayBeMadeOnManyThreads)
{
    int completed = 0;
    auto const work = [&] {
        for (int round = 0; round < 200; ++round)
            session->dataTask(request("a"), [&completed](auto const&) { ++completed; });
    };
    std::thread other(work);
    work();
    other.join();
    while (session->unansweredCount() > 0)
        session->answer(200);
    session->loaderQueue().runAll();
    EXPECT_EQ(completed, 400);
}

}
