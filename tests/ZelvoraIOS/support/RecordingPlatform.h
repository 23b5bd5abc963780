#pragma once

#include "ZelvoraAdapters/memory/ForwardingNotificationCenter.h"
#include "tests/ZelvoraIOS/support/ForwardingPlatform.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvora::tests {

/// A notification centre that adds registrations and removals to the record: "addObserver NAME", "removeObserver".
class RecordingNotificationCenter final : public memory::ForwardingNotificationCenter {
public:
    RecordingNotificationCenter(platform::NotificationCenter& center, memory::CallRecord& record)
        : ForwardingNotificationCenter(center)
        , m_record(record)
    {
    }

    /// The observer objects that were removed, for comparison only.
    [[nodiscard]] std::vector<void const*> const& removed() const { return m_removed; }

    // platform::NotificationCenter
    using ForwardingNotificationCenter::addObserver;
    using ForwardingNotificationCenter::removeObserver;
    void addObserver(std::shared_ptr<void const> const& observer, std::string name, Handler handler) override;
    void removeObserver(void const* observer) override;

private:
    memory::CallRecord& m_record;
    std::vector<void const*> m_removed;
};

/// A JSON writer that can be made to fail for valid values, and counts how often it is given invalid ones.
class FailingJSONSerialization final : public platform::JSONSerialization {
public:
    explicit FailingJSONSerialization(platform::JSONSerialization const& json) : m_json(json) { }

    void setFailing(bool failing) { m_failing = failing; }
    /// Writes these bytes from now on, whatever the value.
    void setOutput(std::string bytes) { m_output = std::move(bytes); }
    [[nodiscard]] std::size_t invalidCount() const { return m_invalidCount; }

    // platform::JSONSerialization
    [[nodiscard]] bool isValidJSONObject(platform::Value const& value) const override
    {
        return m_json.isValidJSONObject(value);
    }
    [[nodiscard]] std::expected<platform::Data, platform::Error> data(
        platform::Value const& jsonObject, platform::JSONWritingOptions options) const override;
    [[nodiscard]] std::expected<platform::Value, platform::Error> jsonObject(platform::Data const& data) const override
    {
        return m_json.jsonObject(data);
    }

private:
    platform::JSONSerialization const& m_json;
    bool m_failing = false;
    std::optional<std::string> m_output;
    std::size_t mutable m_invalidCount = 0;
};

/// A system's web view that records every call, and "invalidate" for the end of an observation.
class RecordingWebView final : public platform::WKWebView {
public:
    RecordingWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration, memory::CallRecord& record);

    // platform::WKWebView
    [[nodiscard]] platform::WKWebViewConfiguration const& configuration() const override { return m_configuration; }
    void setInspectable(bool inspectable) override;
    void setNavigationDelegate(platform::WKNavigationDelegate* delegate) override;
    void setAllowsBackForwardNavigationGestures(bool allows) override;
    void load(platform::URLRequest request) override;
    [[nodiscard]] std::optional<platform::URL> url() const override { return std::nullopt; }
    [[nodiscard]] bool canGoBack() const override { return false; }
    void goBack() override { note("goBack"); }
    void evaluateJavaScript(std::string const& script) override;
    [[nodiscard]] std::unique_ptr<platform::NSKeyValueObservation> observeURL(
        std::function<void(platform::WKWebView&)> handler) override;

private:
    class Observation;

    void note(std::string call) { m_record.add(this, std::move(call)); }

    platform::WKWebViewConfiguration m_configuration;
    memory::CallRecord& m_record;
};

/// A platform in memory that records the calls of several services in the screen's one record, for tests of the order
/// of steps across them.
class RecordingPlatform final : public ForwardingPlatform {
public:
    /// All recorded calls, in order.
    [[nodiscard]] std::vector<std::string> calls();

    // platform::Platform
    [[nodiscard]] RecordingNotificationCenter& notificationCenter() override { return m_notificationCenter; }
    [[nodiscard]] FailingJSONSerialization& jsonSerialization() override { return m_jsonSerialization; }
    [[nodiscard]] std::shared_ptr<platform::WKWebView> makeWebView(
        platform::CGRect frame, platform::WKWebViewConfiguration configuration) override;

private:
    RecordingNotificationCenter m_notificationCenter { memory.notificationCenter(), memory.screen().calls() };
    FailingJSONSerialization m_jsonSerialization { memory.jsonSerialization() };
};

}
