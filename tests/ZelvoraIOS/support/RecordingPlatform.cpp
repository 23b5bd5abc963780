#include "tests/ZelvoraIOS/support/RecordingPlatform.h"

#include <utility>

namespace zelvora::tests {

void RecordingNotificationCenter::addObserver(
    std::shared_ptr<void const> const& observer, std::string name, Handler handler)
{
    m_record.add(this, "addObserver " + name);
    ForwardingNotificationCenter::addObserver(observer, std::move(name), std::move(handler));
}

void RecordingNotificationCenter::removeObserver(void const* observer)
{
    m_record.add(this, "removeObserver");
    m_removed.push_back(observer);
    ForwardingNotificationCenter::removeObserver(observer);
}

std::expected<platform::Data, platform::Error> FailingJSONSerialization::data(
    platform::Value const& jsonObject, platform::JSONWritingOptions options) const
{
    if (!m_json.isValidJSONObject(jsonObject))
        ++m_invalidCount;
    if (m_failing)
        return std::unexpected(platform::Error { "test", 1, "The writer was told to fail." });
    if (m_output)
        return platform::Data { *m_output };
    return m_json.data(jsonObject, options);
}

class RecordingWebView::Observation final : public platform::NSKeyValueObservation {
public:
    explicit Observation(std::weak_ptr<platform::UIView> view) : m_view(std::move(view)) { }

    // platform::NSKeyValueObservation
    void invalidate() override
    {
        if (auto const view = m_view.lock())
            static_cast<RecordingWebView&>(*view).note("invalidate");
    }

private:
    std::weak_ptr<platform::UIView> m_view;
};

RecordingWebView::RecordingWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration, memory::CallRecord& record)
    : WKWebView(frame)
    , m_configuration(std::move(configuration))
    , m_record(record)
{
    note("makeWebView");
}

void RecordingWebView::setInspectable(bool inspectable)
{
    note(inspectable ? "setInspectable true" : "setInspectable false");
}

void RecordingWebView::setNavigationDelegate(platform::WKNavigationDelegate* delegate)
{
    note(delegate ? "setNavigationDelegate" : "setNavigationDelegate none");
}

void RecordingWebView::setAllowsBackForwardNavigationGestures(bool allows)
{
    note(allows ? "setAllowsBackForwardNavigationGestures true" : "setAllowsBackForwardNavigationGestures false");
}

void RecordingWebView::load(platform::URLRequest request)
{
    note("load " + request.url.absoluteString());
}

void RecordingWebView::evaluateJavaScript(std::string const& script)
{
    note("evaluateJavaScript " + script);
}

std::unique_ptr<platform::NSKeyValueObservation> RecordingWebView::observeURL(std::function<void(platform::WKWebView&)>)
{
    note("observeURL");
    return std::make_unique<Observation>(weak_from_this());
}

std::vector<std::string> RecordingPlatform::calls()
{
    std::vector<std::string> texts;
    for (auto const& call : memory.screen().calls().all())
        texts.push_back(call.text);
    return texts;
}

std::shared_ptr<platform::WKWebView> RecordingPlatform::makeWebView(
    platform::CGRect frame, platform::WKWebViewConfiguration configuration)
{
    return std::make_shared<RecordingWebView>(frame, std::move(configuration), memory.screen().calls());
}

}
