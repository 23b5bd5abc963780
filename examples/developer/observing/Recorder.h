#pragma once

#include "ZelvoraPlatform/Foundation/Date.h"
#include "examples/developer/observing/PlatformObserver.h"
#include "examples/developer/observing/Records.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace zelvora::developer {

/// Writes down what it is told of, message by message and upload by upload. Main thread.
class Recorder final : public PlatformObserver {
public:
    /// `now` dates the records.
    explicit Recorder(std::function<platform::Date()> now) : m_now(std::move(now)) { }

    [[nodiscard]] Records const& records() const { return m_records; }
    /// Called after each change; it must not call this object. Values and events may have changed too.
    void setOnChange(std::function<void()> onChange) { m_onChange = std::move(onChange); }
    /// Called for each message that is answered, with its index and the callback's name, before the answer is given.
    using AnswerHandler = std::function<void(std::size_t message, std::string const& callback)>;
    void setOnAnswer(AnswerHandler onAnswer) { m_onAnswer = std::move(onAnswer); }
    /// The address to which events are uploaded; requests to others are not recorded.
    void setTrackingEndpoint(std::string endpoint) { m_trackingEndpoint = std::move(endpoint); }

    // What the app itself is told.
    void didNavigate(std::string const& url);
    void didCallAction(std::string const& name, std::optional<std::string> const& data);
    void didComplain(std::string const& line);
    /// The main frame has no function of this name.
    void didLoseAnswer(std::size_t message, std::string const& callback);

    // PlatformObserver
    void willHandleMessage(platform::WKScriptMessage const& message) override;
    void didHandleMessage() override;
    void didWritePreferences() override;
    void didQueueWork() override;
    void didPost(platform::Notification const& notification) override;
    void didLog(platform::OSLogType type, std::string const& line) override;
    void didSend(std::uint64_t number, platform::URLRequest const& request) override;
    void didReceive(
        std::uint64_t number, std::expected<platform::URLSession::Answer, platform::Error> const& answer) override;

private:
    void noteEffect();
    void changed() const;

    std::function<platform::Date()> m_now;
    std::function<void()> m_onChange;
    AnswerHandler m_onAnswer;
    std::string m_trackingEndpoint;
    Records m_records;
    // The message that the SDK handles now, and what it does with it.
    std::optional<platform::Value> m_body;
    Effects m_effects;
};

}
