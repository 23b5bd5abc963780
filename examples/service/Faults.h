#pragma once

#include "examples/service/Http.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace zelvora::examples {

/// What can be told to fail.
enum class Target : std::uint8_t { Lookup, Collector, Site };

enum class Cut : std::uint8_t {
    None,
    BeforeAnswer, ///< The request is read, nothing is done about it, and the connection ends.
    MidBody, ///< The request is carried out, and the connection ends after half of the answer's body.
};

enum class BodyFault : std::uint8_t { Empty, BrokenJson, WrongShape, Huge, Text };

/// How the next answers of one target go wrong. Whatever is not said stays as it would have been.
struct Fault {
    std::optional<unsigned> status = std::nullopt;
    std::chrono::milliseconds delay { 0 };
    Cut cut = Cut::None;
    std::optional<BodyFault> body = std::nullopt;
    std::size_t bytes = 0; ///< The length of a huge body.
    std::string text = {}; ///< The body when it is a given text.
    std::optional<unsigned> requests = std::nullopt; ///< How many requests it meets; all of them when absent.

    /// Whether the request gets no further than the door: a failure status, or cut before it is answered.
    bool refuses() const;
};

/// The faults in force, one per target, and how often each target was asked. May be used from any thread.
class Faults {
public:
    void set(Target target, Fault fault);
    void reset();

    /// Counts a request, and gives the fault it meets.
    std::optional<Fault> meet(Target target);
    unsigned requests(Target target) const;

    nlohmann::json describe() const;

private:
    struct State {
        std::optional<Fault> fault;
        unsigned requests = 0;
    };
    State& stateOf(Target target);
    State const& stateOf(Target target) const;

    mutable std::mutex m_mutex;
    std::array<State, 3> m_states;
};

struct FaultOrder {
    Target target;
    Fault fault;
};

/// Reads what the control endpoint was sent; the error is a sentence for its sender.
std::expected<FaultOrder, std::string> readFaultOrder(nlohmann::json const& json);

/// The reply after the fault had its way with its status and body.
Reply spoil(Reply reply, Target target, Fault const& fault);

} // namespace zelvora::examples
