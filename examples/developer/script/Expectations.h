#pragma once

#include "examples/developer/script/Script.h"
#include "examples/developer/script/ScriptedApp.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace zelvora::developer {

/// Compares what a script expects with what the app did. Of lines of one kind each takes the next message, upload,
/// address or action that fits, so that two lines expect two of them; what fits no line is passed over.
class Expectations final {
public:
    explicit Expectations(ScriptedApp const& app) : m_app(app) { }

    /// Whether the step expects something.
    [[nodiscard]] static bool isExpectation(Verb verb);
    /// Whether it holds only if it still does when all that the page did before has arrived.
    [[nodiscard]] static bool isAboutAbsence(Verb verb);

    /// What there is instead; absent if the expectation holds.
    [[nodiscard]] std::optional<std::string> check(Step const& step);

private:
    using Finding = std::optional<std::string>;

    [[nodiscard]] Finding checkMessage(Step const& step);
    [[nodiscard]] Finding checkNothingDropped() const;
    [[nodiscard]] Finding checkStored(Step const& step) const;
    [[nodiscard]] Finding checkNotStored(Step const& step) const;
    [[nodiscard]] Finding checkExpiry(Step const& step) const;
    [[nodiscard]] Finding checkQueue(Step const& step) const;
    [[nodiscard]] Finding checkEvent(Step const& step) const;
    [[nodiscard]] Finding checkUpload(Step const& step);
    [[nodiscard]] Finding checkPage(Step const& step);
    [[nodiscard]] Finding checkAction(Step const& step);
    [[nodiscard]] Finding checkFooter(Step const& step) const;

    template<typename Record, typename Fits>
    [[nodiscard]] bool takeNext(Verb verb, std::vector<Record> const& records, Fits const& fits);

    ScriptedApp const& m_app;
    // Up to where the lines of each kind have taken their records.
    std::map<Verb, std::size_t> m_taken;
};

}
