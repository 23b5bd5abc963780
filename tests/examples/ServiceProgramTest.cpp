#include "ZelvoraAdapters/gtk/GLib/Pointers.h"
#include "examples/service/ServiceClient.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace zelvora::tests {

/// The program as a process of its own.
class ServiceProgramTest : public testing::Test {
protected:
    void SetUp() override { start(); }

    void TearDown() override
    {
        if (m_program)
            end(SIGKILL);
    }

    void start()
    {
        m_program = gtk::adopt(g_subprocess_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE, nullptr, ZELVORA_SERVICE_PROGRAM,
            "--data", m_directory.path().c_str(), nullptr));
        ASSERT_TRUE(m_program);
        auto const output = gtk::adopt(g_data_input_stream_new(g_subprocess_get_stdout_pipe(m_program.get())));
        gtk::GTextPointer const line(g_data_input_stream_read_line(output.get(), nullptr, nullptr, nullptr));
        ASSERT_TRUE(line);
        std::string const expected = "listening ";
        ASSERT_TRUE(std::string(line.get()).starts_with(expected)) << line.get();
        m_port = std::string(line.get()).substr(expected.size());
        m_client = examples::ServiceClient(m_directory.path() / "ca.pem");
    }

    void end(int signal)
    {
        g_subprocess_send_signal(m_program.get(), signal);
        g_subprocess_wait(m_program.get(), nullptr, nullptr);
    }

    std::string at(std::string const& host, std::string const& path) const
    {
        return "https://" + host + ".zelvora.localhost:" + m_port + path;
    }

    TemporaryDirectory m_directory;
    gtk::GObjectPointer<GSubprocess> m_program;
    std::string m_port;
    examples::ServiceClient m_client;
};

TEST_F(ServiceProgramTest, TheProgramPrintsItsPortAndServesThere)
{
    auto const answer = m_client.post(at("lookup", "/"), R"({"profile":"dev","api_key":"demo-key"})");
    EXPECT_EQ(answer.body, R"({"data":{"shopId":"hanok"}})");
    EXPECT_EQ(m_client.get(at("hanok.dev", "/v1/")).status, 200U);
}

TEST_F(ServiceProgramTest, TheProgramEndsWithSuccessWhenToldTo)
{
    end(SIGTERM);
    EXPECT_TRUE(g_subprocess_get_if_exited(m_program.get()));
    EXPECT_EQ(g_subprocess_get_exit_status(m_program.get()), 0);
}

TEST_F(ServiceProgramTest, WhatWasAcknowledgedSurvivesAKill)
{
    auto const body = R"({"profile":"prd","data":[{"eventId":"kept"}]})";
    ASSERT_EQ(m_client.post(at("collector", "/v1/events"), body).status, 200U);
    end(SIGKILL);
    start();
    EXPECT_NE(m_client.get(at("collector", "/events.json")).body.find(R"({"eventId":"kept"})"), std::string::npos);
}

TEST(ServiceUsageTest, InvalidArgumentsEndTheProgramWithItsUsage)
{
    for (auto const* option : { "--data", "--port=1", "--help" }) {
        auto const program = gtk::adopt(
            g_subprocess_new(G_SUBPROCESS_FLAGS_STDERR_PIPE, nullptr, ZELVORA_SERVICE_PROGRAM, option, nullptr));
        ASSERT_TRUE(program);
        char* said = nullptr;
        g_subprocess_communicate_utf8(program.get(), nullptr, nullptr, nullptr, &said, nullptr);
        gtk::GTextPointer const owner(said);
        EXPECT_EQ(g_subprocess_get_exit_status(program.get()), 1) << option;
        EXPECT_TRUE(std::string(said).starts_with("usage: zelvora-service ")) << said;
    }
}

}
