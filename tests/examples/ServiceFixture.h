#pragma once

#include "examples/service/Service.h"
#include "examples/service/ServiceClient.h"
#include "tests/examples/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

namespace zelvora::examples {

/// A running service with a fresh directory, and a client that trusts it.
class ServiceFixture : public testing::Test {
protected:
    void SetUp() override { restart(); }

    void restart(std::filesystem::path const& site = {})
    {
        service.reset();
        auto started = Service::start({ .dataDirectory = directory.path() / "data", .siteDirectory = site });
        ASSERT_TRUE(started) << started.error();
        service = std::move(*started);
        client = ServiceClient(service->authority());
    }

    std::string at(std::string const& host, std::string const& path) const { return service->address(host) + path; }

    Answer lookUp(std::string const& apiKey)
    {
        nlohmann::json const question = { { "profile", "prd" }, { "api_key", apiKey } };
        return client.post(at("lookup", "/"), question.dump());
    }

    Answer collect(std::string const& body) { return client.post(at("collector", "/v1/events"), body); }

    nlohmann::json collected()
    {
        return nlohmann::json::parse(client.get(at("collector", "/events.json")).body).at("batches");
    }

    void setFault(std::string const& fault)
    {
        auto const answer = client.post(at("control", "/faults"), fault);
        ASSERT_EQ(answer.status, 200U) << answer.body;
    }

    TemporaryDirectory directory;
    std::unique_ptr<Service> service;
    ServiceClient client;
};

} // namespace zelvora::examples
