#include "examples/service/Faults.h"

#include "examples/service/FaultNames.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace zelvora::examples {

namespace {

std::string hugeJson(std::size_t bytes)
{
    static constexpr std::string_view s_start = R"({"padding":")";
    static constexpr std::string_view s_end = R"("})";
    std::string body(bytes, 'z');
    if (bytes < s_start.size() + s_end.size())
        return body;
    body.replace(0, s_start.size(), s_start);
    body.replace(bytes - s_end.size(), s_end.size(), s_end);
    return body;
}

std::string wrongShape(Target target)
{
    return target == Target::Lookup ? R"({"data":{"shopId":42}})" : R"([{"unexpected":true}])";
}

std::string spoiledBody(Target target, Fault const& fault)
{
    switch (*fault.body) {
    case BodyFault::Empty:
        return {};
    case BodyFault::BrokenJson:
        return R"({"data":{"shopId":)";
    case BodyFault::WrongShape:
        return wrongShape(target);
    case BodyFault::Huge:
        return hugeJson(fault.bytes);
    case BodyFault::Text:
        return fault.text;
    }
    std::unreachable();
}

nlohmann::json describeFault(Fault const& fault)
{
    auto json = nlohmann::json::object();
    if (fault.status)
        json["status"] = *fault.status;
    if (fault.delay.count() > 0)
        json["delay"] = fault.delay.count();
    if (fault.cut != Cut::None)
        json["cut"] = nameOf(fault.cut);
    if (fault.body)
        json["body"] = nameOf(*fault.body);
    if (fault.body == BodyFault::Huge)
        json["bytes"] = fault.bytes;
    if (fault.body == BodyFault::Text)
        json["text"] = fault.text;
    if (fault.requests)
        json["requests"] = *fault.requests;
    return json;
}

} // namespace

bool Fault::refuses() const
{
    return cut == Cut::BeforeAnswer || (status && (*status < 200 || *status > 299));
}

void Faults::set(Target target, Fault fault)
{
    std::scoped_lock const lock(m_mutex);
    stateOf(target).fault = std::move(fault);
}

void Faults::reset()
{
    std::scoped_lock const lock(m_mutex);
    m_states = {};
}

std::optional<Fault> Faults::meet(Target target)
{
    std::scoped_lock const lock(m_mutex);
    auto& state = stateOf(target);
    ++state.requests;
    auto const fault = state.fault;
    if (fault && fault->requests) {
        auto const left = *fault->requests - 1;
        if (left == 0)
            state.fault.reset();
        else
            state.fault->requests = left;
    }
    return fault;
}

unsigned Faults::requests(Target target) const
{
    std::scoped_lock const lock(m_mutex);
    return stateOf(target).requests;
}

nlohmann::json Faults::describe() const
{
    std::scoped_lock const lock(m_mutex);
    auto json = nlohmann::json::object();
    for (auto const& [target, name] : s_targetNames) {
        auto const& state = stateOf(target);
        json[std::string(name)] = { { "requests", state.requests },
            { "fault", state.fault ? describeFault(*state.fault) : nlohmann::json() } };
    }
    return json;
}

Faults::State& Faults::stateOf(Target target)
{
    return m_states.at(static_cast<std::size_t>(target));
}

Faults::State const& Faults::stateOf(Target target) const
{
    return m_states.at(static_cast<std::size_t>(target));
}

Reply spoil(Reply reply, Target target, Fault const& fault)
{
    if (fault.status)
        reply.status = *fault.status;
    if (fault.refuses() && !fault.body)
        return errorReply(reply.status, "told to fail");
    if (fault.body) {
        reply.body = spoiledBody(target, fault);
        reply.contentType = fault.body == BodyFault::Text ? "text/plain; charset=utf-8" : "application/json";
    }
    return reply;
}

} // namespace zelvora::examples
