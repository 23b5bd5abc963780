#include "examples/service/Faults.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace zelvora::examples {

namespace {

constexpr unsigned longestDelay = 600'000;
constexpr unsigned hugestBody = 100U * 1024 * 1024;
constexpr unsigned mostRequests = 1'000'000;

// In the order of the enumerations.
constexpr std::array<std::string_view, 3> targetNames { "lookup", "collector", "site" };
constexpr std::array<std::string_view, 2> cutNames { "before-answer", "mid-body" };
constexpr std::array<std::string_view, 5> bodyNames { "empty", "broken-json", "wrong-shape", "huge", "text" };

template<typename Place>
bool readNumber(Place& place, Json const& value, unsigned lowest, unsigned highest)
{
    if (!value.is_number_unsigned() || value < lowest || value > highest)
        return false;
    place = Place(value.get<unsigned>());
    return true;
}

template<typename Enumeration, typename Names>
bool readName(std::optional<Enumeration>& place, Json const& value, Names const& names)
{
    auto const* const found = value.is_string() ? std::ranges::find(names, value.get<std::string>()) : names.end();
    if (found == names.end())
        return false;
    place = static_cast<Enumeration>(found - names.begin());
    return true;
}

bool readMember(Fault& fault, std::string_view name, Json const& value)
{
    if (name == "status")
        return readNumber(fault.status, value, 200, 599);
    if (name == "delay")
        return readNumber(fault.delay, value, 0, longestDelay);
    if (name == "cut")
        return readName(fault.cut, value, cutNames);
    if (name == "body")
        return readName(fault.body, value, bodyNames);
    if (name == "bytes")
        return readNumber(fault.bytes, value, 0, hugestBody);
    if (name == "requests")
        return readNumber(fault.requests, value, 1, mostRequests);
    if (name != "text" || !value.is_string())
        return false;
    fault.text = value.get<std::string>();
    return true;
}

Json describeFault(Fault const& fault)
{
    auto json = Json::object();
    if (fault.status)
        json["status"] = *fault.status;
    if (fault.delay.count() > 0)
        json["delay"] = fault.delay.count();
    if (fault.cut)
        json["cut"] = cutNames.at(std::to_underlying(*fault.cut));
    if (fault.body)
        json["body"] = bodyNames.at(std::to_underlying(*fault.body));
    if (fault.body == BodyFault::Huge)
        json["bytes"] = fault.bytes;
    if (fault.body == BodyFault::Text)
        json["text"] = fault.text;
    if (fault.requests)
        json["requests"] = *fault.requests;
    return json;
}

// JSON of exactly this length, unless that is too short for any.
std::string hugeBody(std::size_t bytes)
{
    constexpr std::string_view start = R"({"padding":")";
    constexpr std::string_view end = R"("})";
    std::string body(bytes, 'z');
    if (bytes < start.size() + end.size())
        return body;
    body.replace(0, start.size(), start);
    body.replace(bytes - end.size(), end.size(), end);
    return body;
}

std::string spoiledBody(Fault const& fault, Target target)
{
    switch (*fault.body) {
    case BodyFault::Empty:
        return {};
    case BodyFault::BrokenJson:
        return R"({"data":{"shopId":)";
    case BodyFault::WrongShape:
        return target == Target::Lookup ? R"({"data":{"shopId":42}})" : R"([{"unexpected":true}])";
    case BodyFault::Huge:
        return hugeBody(fault.bytes);
    case BodyFault::Text:
        return fault.text;
    }
    std::unreachable();
}

}

bool Fault::refuses() const
{
    return cut == Cut::BeforeAnswer || (status && (*status < 200 || *status > 299));
}

Reply Fault::spoil(Reply reply, Target target) const
{
    reply.status = status.value_or(reply.status);
    if (!body)
        return refuses() ? errorReply(reply.status, "told to fail") : reply;
    reply.body = spoiledBody(*this, target);
    reply.contentType = body == BodyFault::Text ? "text/plain; charset=utf-8" : "application/json";
    return reply;
}

void Faults::set(Target target, Fault fault)
{
    std::scoped_lock const lock(m_mutex);
    m_states.at(std::to_underlying(target)).fault = std::move(fault);
}

void Faults::reset()
{
    std::scoped_lock const lock(m_mutex);
    m_states = {};
}

std::optional<Fault> Faults::meet(Target target)
{
    std::scoped_lock const lock(m_mutex);
    auto& [fault, requests] = m_states.at(std::to_underlying(target));
    ++requests;
    auto const met = fault;
    if (fault && fault->requests && --*fault->requests == 0)
        fault.reset();
    return met;
}

unsigned Faults::requests(Target target) const
{
    std::scoped_lock const lock(m_mutex);
    return m_states.at(std::to_underlying(target)).requests;
}

Json Faults::describe() const
{
    std::scoped_lock const lock(m_mutex);
    auto json = Json::object();
    for (std::size_t i = 0; i < targetNames.size(); ++i) {
        auto const& [fault, requests] = m_states.at(i);
        json[targetNames.at(i)] = { { "requests", requests }, { "fault", fault ? describeFault(*fault) : Json() } };
    }
    return json;
}

std::expected<FaultOrder, std::string> readFaultOrder(Json const& json)
{
    std::optional<Target> target;
    if (!json.is_object() || !json.contains("target") || !readName(target, json.at("target"), targetNames))
        return std::unexpected("the body must be an object whose target is lookup, collector or site");
    FaultOrder order { .target = *target, .fault = {} };
    for (auto const& [name, value] : json.items()) {
        if (name != "target" && !readMember(order.fault, name, value))
            return std::unexpected(name + " is not a member of a fault, or cannot have this value");
    }
    return order;
}

}
