#include "examples/service/ServiceClient.h"
#include "tests/examples/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>

namespace zelvora::examples {

/// The program as a process of its own.
class ServiceProgramTest : public testing::Test {
protected:
    void SetUp() override { start(); }

    void TearDown() override
    {
        if (program)
            end(SIGKILL);
    }

    void start()
    {
        program.reset(g_subprocess_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE, nullptr, ZELVORA_SERVICE_PROGRAM, "--data",
            directory.path().c_str(), nullptr));
        ASSERT_TRUE(program);
        ObjectPointer<GDataInputStream> const output(
            g_data_input_stream_new(g_subprocess_get_stdout_pipe(program.get())));
        GlibText const line(g_data_input_stream_read_line(output.get(), nullptr, nullptr, nullptr));
        ASSERT_TRUE(line);
        ASSERT_TRUE(std::string(line.get()).starts_with("listening ")) << line.get();
        port = std::string(line.get()).substr(std::string("listening ").size());
    }

    void end(int signal)
    {
        g_subprocess_send_signal(program.get(), signal);
        g_subprocess_wait(program.get(), nullptr, nullptr);
    }

    std::string at(std::string const& host, std::string const& path) const
    {
        return "https://" + host + ".zelvora.localhost:" + port + path;
    }

    TemporaryDirectory directory;
    ObjectPointer<GSubprocess> program;
    std::string port;
};

TEST_F(ServiceProgramTest, TheProgramTellsItsPortAndServesThere)
{
    ServiceClient client(directory.path() / "ca.pem");
    auto const answer = client.post(at("lookup", "/"), R"({"profile":"dev","api_key":"demo-key"})");
    EXPECT_EQ(answer.body, R"({"data":{"shopId":"hanok"}})");
    EXPECT_EQ(client.get(at("hanok.dev", "/v1/")).status, 200U);
}

TEST_F(ServiceProgramTest, TheProgramEndsWithSuccessWhenToldTo)
{
    end(SIGTERM);
    EXPECT_TRUE(g_subprocess_get_if_exited(program.get()));
    EXPECT_EQ(g_subprocess_get_exit_status(program.get()), 0);
}

TEST_F(ServiceProgramTest, WhatWasAcknowledgedSurvivesAKill)
{
    auto const body = R"({"profile":"prd","data":[{"eventId":"kept"}]})";
    ServiceClient client(directory.path() / "ca.pem");
    ASSERT_EQ(client.post(at("collector", "/v1/events"), body).status, 200U);
    end(SIGKILL);
    start();
    EXPECT_NE(client.get(at("collector", "/events.json")).body.find(R"({"eventId":"kept"})"), std::string::npos);
}

TEST(ServiceUsageTest, ArgumentsThatCannotBeReadEndTheProgramWithItsUsage)
{
    for (auto const* option : { "--data", "--port=1", "--help" }) {
        ObjectPointer<GSubprocess> const program(
            g_subprocess_new(G_SUBPROCESS_FLAGS_STDERR_PIPE, nullptr, ZELVORA_SERVICE_PROGRAM, option, nullptr));
        ASSERT_TRUE(program);
        char* said = nullptr;
        g_subprocess_communicate_utf8(program.get(), nullptr, nullptr, nullptr, &said, nullptr);
        GlibText const owner(said);
        EXPECT_EQ(g_subprocess_get_exit_status(program.get()), 1) << option;
        EXPECT_TRUE(std::string(said).starts_with("usage: zelvora-service ")) << said;
    }
}

} // namespace zelvora::examples
