#pragma once

#include "examples/host/LiveObjects.h"
#include "examples/host/Usage.h"

#include <map>
#include <string>
#include <vector>

namespace zelvora::examples {

/// Compares what the app uses when it is at rest with what it used early. The first rounds fill the caches of the
/// toolkit and the engine. Main thread.
class RestingUsage final {
public:
    /// Up to this round usage is early.
    static constexpr int earlyRounds = 10;

    explicit RestingUsage(LiveObjects& objects) : m_objects(objects) { }

    /// Waits until the app is at rest after a round and prints what it uses. Runs the main loop.
    void measure(int round);
    /// What the latest measurement has more of than the early one, a sentence each. An opened shop leaves no object,
    /// early neither.
    [[nodiscard]] std::vector<std::string> excess();
    /// The kinds of descriptors, threads and processes that there are more of now, as lines.
    [[nodiscard]] std::string details() const;

private:
    void print(int round);

    LiveObjects& m_objects;
    Usage m_early;
    Usage m_latest;
    std::map<std::string, int> m_earlyNames;
};

}
