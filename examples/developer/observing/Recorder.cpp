#include "examples/developer/observing/Recorder.h"

#include "ZelvoraPlatform/Foundation/Dictionary.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace zelvora::developer {

namespace {

constexpr std::string_view answerLine = "Send callback data: ";

std::string textAt(platform::Value const& body, std::string_view name)
{
    auto const* const message = body.dictionary();
    auto const* const member = message ? message->find(name) : nullptr;
    return member && member->text() ? *member->text() : "";
}

// What is no JSON, such as a text that is not UTF-8, stays a text.
Json parsed(std::string const& text)
{
    auto json = Json::parse(text, nullptr, false);
    return json.is_discarded() ? Json(text) : json;
}

}

void Recorder::didNavigate(std::string const& url)
{
    m_records.navigations.push_back(url);
    changed();
}

void Recorder::didCallAction(std::string const& name, std::optional<std::string> const& data)
{
    m_effects.action = name;
    m_records.actions.push_back({ name, data });
    changed();
}

void Recorder::didComplain(std::string const& line)
{
    m_records.complaints.push_back(line);
    changed();
}

void Recorder::didLoseAnswer(std::size_t message, std::string const& callback)
{
    auto& record = m_records.messages.at(message);
    record.isAnswerLost = true;
    record.outcome.warning = Text { "주 프레임에 이런 함수가 없어서 응답을 아무도 받지 못했습니다: " + callback,
        "nobody received the answer: the main frame has no function " + callback };
    changed();
}

void Recorder::willHandleMessage(platform::WKScriptMessage const& message)
{
    m_body = message.body;
    m_effects = {};
}

void Recorder::didHandleMessage()
{
    auto const body = std::exchange(m_body, std::nullopt);
    if (!body)
        return;
    auto const effects = std::exchange(m_effects, {});
    m_records.messages.push_back({ .time = m_now(),
        .action = textAt(*body, "action"),
        .body = toJson(*body),
        .outcome = judge(*body, effects),
        .answer = effects.answer.transform(parsed) });
    if (effects.answer && m_onAnswer)
        m_onAnswer(m_records.messages.size() - 1, textAt(*body, "callback"));
    changed();
}

void Recorder::didWritePreferences()
{
    noteEffect();
}

void Recorder::didQueueWork()
{
    noteEffect();
}

void Recorder::didPost(platform::Notification const&)
{
    noteEffect();
}

void Recorder::didLog(platform::OSLogType type, std::string const& line)
{
    if (m_body && line.starts_with(answerLine))
        m_effects.answer = line.substr(answerLine.size());
    if (type != platform::OSLogType::Error && type != platform::OSLogType::Fault)
        return;
    if (m_body)
        m_effects.errors.push_back(line);
    else
        didComplain(line);
}

void Recorder::didSend(std::uint64_t number, platform::URLRequest const& request)
{
    if (request.url.absoluteString() != m_trackingEndpoint)
        return;
    auto const body = parsed(request.httpBody.bytes);
    m_records.uploads.push_back({ .time = m_now(),
        .request = number,
        .events = body.is_object() ? body.value("data", Json::array()) : Json::array(),
        .status = std::nullopt,
        .body = {},
        .error = std::nullopt });
    changed();
}

void Recorder::didReceive(
    std::uint64_t number, std::expected<platform::URLSession::Answer, platform::Error> const& answer)
{
    auto const upload = std::ranges::find(m_records.uploads, number, &UploadRecord::request);
    if (upload == m_records.uploads.end())
        return;
    if (answer) {
        upload->status = answer->response.statusCode.value_or(-1);
        upload->body = answer->data.bytes;
    } else
        upload->error = answer.error().localizedDescription;
    changed();
}

void Recorder::noteEffect()
{
    if (m_body)
        m_effects.didChange = true;
    changed();
}

void Recorder::changed() const
{
    if (m_onChange)
        m_onChange();
}

}
