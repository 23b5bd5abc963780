#pragma once

#include "examples/service/Service.h"
#include "examples/service/ServiceClient.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

namespace zelvora::tests {

/// Compares objects without regard to the order of their members.
using Json = nlohmann::json;

/// A running service with an empty directory, and a client that trusts it.
class ServiceFixture : public testing::Test {
protected:
    void SetUp() override { restart(); }

    void restart(std::filesystem::path const& site = {})
    {
        restart(examples::ServiceOptions { .dataDirectory = m_directory.path() / "data", .siteDirectory = site });
    }

    void restart(examples::ServiceOptions const& options)
    {
        m_service.reset();
        auto started = examples::Service::start(options);
        ASSERT_TRUE(started) << started.error();
        m_service = std::move(*started);
        m_client = examples::ServiceClient(m_service->authority());
    }

    std::string at(std::string const& host, std::string const& path) const { return m_service->address(host) + path; }

    examples::Answer get(std::string const& host, std::string const& path) { return m_client.get(at(host, path)); }

    examples::Answer post(std::string const& host, std::string const& path, std::string const& body,
        char const* contentType = "application/json")
    {
        return m_client.post(at(host, path), body, contentType);
    }

    examples::Answer lookUp(std::string const& apiKey)
    {
        return post("lookup", "/", Json({ { "profile", "prd" }, { "api_key", apiKey } }).dump());
    }

    examples::Answer collect(std::string const& body) { return post("collector", "/v1/events", body); }

    Json collected() { return Json::parse(get("collector", "/events.json").body).at("batches"); }

    void setFault(std::string const& fault)
    {
        auto const answer = post("control", "/faults", fault);
        ASSERT_EQ(answer.status, 200U) << answer.body;
    }

    TemporaryDirectory m_directory;
    std::unique_ptr<examples::Service> m_service;
    examples::ServiceClient m_client;
};

}
