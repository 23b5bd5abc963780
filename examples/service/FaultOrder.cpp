#include "examples/service/FaultNames.h"
#include "examples/service/Faults.h"

#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

using Json = nlohmann::json;
using Outcome = std::expected<void, std::string>;

constexpr std::uint64_t s_longestDelay = 600'000;
constexpr std::uint64_t s_hugestBody = 100UZ * 1024 * 1024;

std::optional<std::uint64_t> numberBetween(Json const& value, std::uint64_t lowest, std::uint64_t highest)
{
    if (!value.is_number_unsigned())
        return std::nullopt;
    auto const number = value.get<std::uint64_t>();
    if (number < lowest || number > highest)
        return std::nullopt;
    return number;
}

Outcome readStatus(Fault& fault, Json const& value)
{
    auto const status = numberBetween(value, 200, 599);
    if (!status)
        return std::unexpected("status must be a number from 200 to 599");
    fault.status = static_cast<unsigned>(*status);
    return {};
}

Outcome readDelay(Fault& fault, Json const& value)
{
    auto const delay = numberBetween(value, 0, s_longestDelay);
    if (!delay)
        return std::unexpected("delay must be milliseconds, up to 600000");
    fault.delay = std::chrono::milliseconds(*delay);
    return {};
}

Outcome readCut(Fault& fault, Json const& value)
{
    auto const cut = value.is_string() ? valueNamed(s_cutNames, value.get<std::string>()) : std::nullopt;
    if (!cut)
        return std::unexpected("cut must be before-answer or mid-body");
    fault.cut = *cut;
    return {};
}

Outcome readBody(Fault& fault, Json const& value)
{
    fault.body = value.is_string() ? valueNamed(s_bodyNames, value.get<std::string>()) : std::nullopt;
    if (!fault.body)
        return std::unexpected("body must be empty, broken-json, wrong-shape, huge or text");
    return {};
}

Outcome readBytes(Fault& fault, Json const& value)
{
    auto const bytes = numberBetween(value, 0, s_hugestBody);
    if (!bytes)
        return std::unexpected("bytes must be a number up to 104857600");
    fault.bytes = *bytes;
    return {};
}

Outcome readText(Fault& fault, Json const& value)
{
    if (!value.is_string())
        return std::unexpected("text must be a text");
    fault.text = value.get<std::string>();
    return {};
}

Outcome readRequests(Fault& fault, Json const& value)
{
    auto const requests = numberBetween(value, 1, 1'000'000);
    if (!requests)
        return std::unexpected("requests must be a number from 1 to 1000000");
    fault.requests = static_cast<unsigned>(*requests);
    return {};
}

Outcome readMember(Fault& fault, std::string_view name, Json const& value)
{
    using Reader = Outcome (*)(Fault&, Json const&);
    static constexpr std::array<std::pair<Reader, std::string_view>, 7> s_readers { {
        { readStatus, "status" },
        { readDelay, "delay" },
        { readCut, "cut" },
        { readBody, "body" },
        { readBytes, "bytes" },
        { readText, "text" },
        { readRequests, "requests" },
    } };
    auto const reader = valueNamed(s_readers, name);
    if (!reader)
        return std::unexpected("unknown member " + std::string(name));
    return (*reader)(fault, value);
}

} // namespace

std::expected<FaultOrder, std::string> readFaultOrder(nlohmann::json const& json)
{
    if (!json.is_object() || !json.contains("target") || !json.at("target").is_string())
        return std::unexpected("the body must be an object with a target");
    auto const target = valueNamed(s_targetNames, json.at("target").get<std::string>());
    if (!target)
        return std::unexpected("target must be lookup, collector or site");

    FaultOrder order { .target = *target, .fault = {} };
    for (auto const& [name, value] : json.items()) {
        if (name == "target")
            continue;
        if (auto const outcome = readMember(order.fault, name, value); !outcome)
            return std::unexpected(outcome.error());
    }
    return order;
}

} // namespace zelvora::examples
