#pragma once

#include "examples/service/Http.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <mutex>
#include <optional>
#include <string>

namespace zelvora::examples {

/// What can be told to fail.
enum class Target : std::uint8_t { Lookup, Collector, Site };

/// Where the connection is closed: before the request is carried out, or after half of the answer's body.
enum class Cut : std::uint8_t { BeforeAnswer, MidBody };

enum class BodyFault : std::uint8_t { Empty, BrokenJson, WrongShape, Huge, Text };

/// How the next answers of a target go wrong. A member that is not set changes nothing.
struct Fault {
    std::optional<unsigned> status = std::nullopt;
    std::chrono::milliseconds delay { 0 };
    std::optional<Cut> cut = std::nullopt;
    std::optional<BodyFault> body = std::nullopt;
    /// The length of a huge body.
    std::size_t bytes = 0;
    /// The body of BodyFault::Text.
    std::string text = {};
    /// How many requests meet the fault; all of them if absent.
    std::optional<unsigned> requests = std::nullopt;

    /// Whether the request is not carried out: its status is a failure, or the connection is closed before the answer.
    [[nodiscard]] bool refuses() const;
    /// The reply with the status and the body of the fault.
    [[nodiscard]] Reply spoil(Reply reply, Target target) const;
};

/// The faults in force, one for each target, and how many requests each target has had. Thread-safe.
class Faults final {
public:
    void set(Target target, Fault fault);
    /// Removes all faults and sets the numbers of requests to zero.
    void reset();

    /// Counts a request and returns the fault that it meets.
    std::optional<Fault> meet(Target target);
    [[nodiscard]] unsigned requests(Target target) const;

    /// As the control host shows it.
    [[nodiscard]] Json describe() const;

private:
    struct State {
        std::optional<Fault> fault;
        unsigned requests = 0;
    };

    mutable std::mutex m_mutex;
    std::array<State, 3> m_states;
};

struct FaultOrder {
    Target target = Target::Lookup;
    Fault fault;
};

/// Reads what was posted to the control host; the error is a sentence for the sender.
[[nodiscard]] std::expected<FaultOrder, std::string> readFaultOrder(Json const& json);

}
