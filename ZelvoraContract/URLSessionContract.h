#pragma once

#include "ZelvoraContract/support/ReceivedRequest.h"
#include "ZelvoraContract/support/Record.h"
#include "ZelvoraContract/support/runOnThreads.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace zelvora::tests {

enum class LoaderFailure {
    /// The port is closed.
    Refused,
    /// The connection ends in the middle of the response body.
    Cut,
    /// The server accepts the request and never answers.
    Silent,
};

/// What every loader promises. A harness makes one and acts as the server:
///
///     platform::URLSession& session();
///     void destroySession();
///     // A URL at which every request gets this answer, and one at which every request fails like this.
///     platform::URL answering(int status, std::string body);
///     platform::URL failing(LoaderFailure failure);
///     // The requests to the answering URLs, in order of arrival.
///     std::vector<ReceivedRequest> received();
///     // Runs the loader until `done` returns true; false after half a minute.
///     bool runUntil(std::function<bool()> const& done);
///     // Called on any thread when the result of `done` may have changed.
///     void changed();
template<typename Harness>
class URLSessionContract : public testing::Test {
protected:
    using Result = std::expected<platform::URLSession::Answer, platform::Error>;

    platform::URLSession::Completion recording()
    {
        return [this](Result result) {
            m_results.add(std::move(result));
            m_harness.changed();
        };
    }

    Result load(platform::URLRequest request)
    {
        auto const before = m_results.size();
        m_harness.session().dataTask(std::move(request), recording());
        if (!m_harness.runUntil([&] { return m_results.size() > before; }))
            return std::unexpected(platform::Error { "test", 0, "the completion was not called" });
        return m_results.all().back();
    }

    void expectError(Result const& result)
    {
        ASSERT_FALSE(result.has_value());
        EXPECT_NE(result.error().domain, "test");
        EXPECT_NE(result.error().domain, "");
        EXPECT_NE(result.error().localizedDescription, "");
    }

    // Declared before the harness: destroying its loader may complete requests.
    Record<Result> m_results;
    Harness m_harness;
};

TYPED_TEST_SUITE_P(URLSessionContract);

TYPED_TEST_P(URLSessionContract, AResponseOfAnyStatusIsAnAnswer)
{
    for (int const status : { 200, 201, 204, 300, 400, 401, 404, 500, 503 }) {
        auto const result = this->load({ .url = this->m_harness.answering(status, status == 204 ? "" : "oops") });
        ASSERT_TRUE(result) << result.error().localizedDescription;
        EXPECT_EQ(result->response.statusCode, status);
        EXPECT_EQ(result->data.bytes, status == 204 ? "" : "oops");
    }
}

TYPED_TEST_P(URLSessionContract, TheBodyArrivesByteForByte)
{
    std::string body;
    for (int i = 0; i < 200'000; ++i)
        body.push_back(static_cast<char>(i * 7 % 256));
    auto const result = this->load({ .url = this->m_harness.answering(200, body) });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, body);
}

TYPED_TEST_P(URLSessionContract, AnEmptyBodyIsEmpty)
{
    auto const result = this->load({ .url = this->m_harness.answering(200, "") });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, "");
}

TYPED_TEST_P(URLSessionContract, TheRequestArrivesUnchanged)
{
    using namespace std::string_literals;
    auto const body = "{\"profile\":\"가\",\"nul\":\"\0\"}"s;
    auto const result = this->load({
        .url = this->m_harness.answering(200, ""),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json; utf-8" }, { "Accept", "application/json" } },
        .httpBody = { body },
    });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    auto const received = this->m_harness.received();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received.front().method, "POST");
    EXPECT_EQ(received.front().headers.at("content-type"), "application/json; utf-8");
    EXPECT_EQ(received.front().headers.at("accept"), "application/json");
    EXPECT_EQ(received.front().body, body);
}

TYPED_TEST_P(URLSessionContract, ARequestIsAGETWithoutABodyUnlessStatedOtherwise)
{
    auto const result = this->load({ .url = this->m_harness.answering(200, "") });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    auto const received = this->m_harness.received();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received.front().method, "GET");
    EXPECT_EQ(received.front().body, "");
}

TYPED_TEST_P(URLSessionContract, NoConnectionIsAnError)
{
    this->expectError(this->load({ .url = this->m_harness.failing(LoaderFailure::Refused) }));
}

TYPED_TEST_P(URLSessionContract, AResponseThatEndsEarlyIsAnError)
{
    this->expectError(this->load({ .url = this->m_harness.failing(LoaderFailure::Cut) }));
}

TYPED_TEST_P(URLSessionContract, NoAnswerWithinTheTimeoutIsAnError)
{
    this->expectError(this->load({ .url = this->m_harness.failing(LoaderFailure::Silent), .timeoutInterval = 0.2 }));
}

TYPED_TEST_P(URLSessionContract, AFailureDoesNotAffectTheNextRequest)
{
    this->expectError(this->load({ .url = this->m_harness.failing(LoaderFailure::Cut) }));
    auto const result = this->load({ .url = this->m_harness.answering(200, "well") });
    ASSERT_TRUE(result) << result.error().localizedDescription;
    EXPECT_EQ(result->data.bytes, "well");
}

TYPED_TEST_P(URLSessionContract, NoCompletionIsCalledBeforeTheCallReturns)
{
    auto& harness = this->m_harness;
    Record<std::string> record;
    auto const good = harness.answering(200, "");
    auto const bad = harness.failing(LoaderFailure::Refused);
    auto const note = [&](char const* what) {
        return [&record, &harness, what](auto const&) {
            record.add(what);
            harness.changed();
        };
    };
    // On the loader's own queue, the only place where a completion could run before the call returns.
    harness.session().dataTask({ .url = good }, [&](auto const&) {
        harness.session().dataTask({ .url = good }, note("completed"));
        harness.session().dataTask({ .url = bad }, note("completed"));
        record.add("returned");
    });
    ASSERT_TRUE(harness.runUntil([&] { return record.size() == 3; }));
    EXPECT_EQ(record.all(), (std::vector<std::string> { "returned", "completed", "completed" }));
}

TYPED_TEST_P(URLSessionContract, CompletionsAreCalledOneAtATime)
{
    auto& harness = this->m_harness;
    constexpr int count = 40;
    auto const url = harness.answering(200, "body");
    std::atomic<int> inside = 0;
    std::atomic<int> most = 0;
    std::atomic<int> finished = 0;
    runOnThreads(4, [&](int) {
        for (int i = 0; i < count / 4; ++i) {
            harness.session().dataTask({ .url = url }, [&](auto const& result) {
                EXPECT_TRUE(result);
                most = std::max<int>(most, ++inside);
                --inside;
                ++finished;
                harness.changed();
            });
        }
    });
    ASSERT_TRUE(harness.runUntil([&] { return finished == count; }));
    EXPECT_EQ(most, 1);
    EXPECT_EQ(harness.received().size(), static_cast<std::size_t>(count));
}

TYPED_TEST_P(URLSessionContract, DestroyingTheSessionCompletesPendingRequestsWithAnError)
{
    auto const url = this->m_harness.failing(LoaderFailure::Silent);
    for (int i = 0; i < 5; ++i)
        this->m_harness.session().dataTask({ .url = url }, this->recording());
    this->m_harness.destroySession();
    auto const results = this->m_results.all();
    ASSERT_EQ(results.size(), 5U);
    for (auto const& result : results)
        this->expectError(result);
}

TYPED_TEST_P(URLSessionContract, ACompletionDuringDestructionMayMakeAnotherRequest)
{
    auto& harness = this->m_harness;
    auto const url = harness.failing(LoaderFailure::Silent);
    auto& session = harness.session();
    session.dataTask({ .url = url }, [&](auto const&) { session.dataTask({ .url = url }, this->recording()); });
    harness.destroySession();
    auto const results = this->m_results.all();
    ASSERT_EQ(results.size(), 1U);
    this->expectError(results.front());
}

REGISTER_TYPED_TEST_SUITE_P(URLSessionContract, AResponseOfAnyStatusIsAnAnswer, TheBodyArrivesByteForByte,
    AnEmptyBodyIsEmpty, TheRequestArrivesUnchanged, ARequestIsAGETWithoutABodyUnlessStatedOtherwise,
    NoConnectionIsAnError, AResponseThatEndsEarlyIsAnError, NoAnswerWithinTheTimeoutIsAnError,
    AFailureDoesNotAffectTheNextRequest, NoCompletionIsCalledBeforeTheCallReturns, CompletionsAreCalledOneAtATime,
    DestroyingTheSessionCompletesPendingRequestsWithAnError, ACompletionDuringDestructionMayMakeAnotherRequest);

}
