#include "ZelvoraPlatform/Foundation/UTF8.h"
#include "tests/simulation/Model.h"
#include "tests/simulation/SimulatedPlatform.h"

#include <string_view>

// The initialization sequence. How many hops it takes is open; what it does, where and in which order, is not.
namespace zelvora::simulation {

using platform::Dictionary;
using platform::Value;

namespace {

constexpr char const* lookupText = "Zelvora 서버 내부 통신 에러가 발생했습니다. ";
constexpr char const* identifier = "0A1B2C3D-4E5F-4607-8899-AABBCCDDEEFF";

std::string trimmed(std::string const& text)
{
    auto const first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string lookupDescription(std::string const& detail)
{
    return trimmed(lookupText + detail);
}

// The shop id in an answer of status 200, if it has one.
std::string const* shopIdIn(Value const& answer)
{
    auto const* data = answer.dictionary() ? answer.dictionary()->find("data") : nullptr;
    auto const* shopId = data && data->dictionary() ? data->dictionary()->find("shopId") : nullptr;
    return shopId ? shopId->text() : nullptr;
}

}

bool isUTF8(std::string_view text)
{
    return platform::decodeUTF8(text).has_value();
}

bool Model::continueSequence(std::string const& line, Queue queue)
{
    if (!m_isInitializing || queue != Queue::Global)
        return false;
    auto const& prefix = m_store.prefix();
    if (m_sequence.lookup == Sequence::Lookup::NotStarted
        && (line.starts_with("log debug get(forKey: shop_id,") || line == "delete " + prefix + "shop_id")) {
        beginLookup();
        return true;
    }
    if (m_sequence.lookup == Sequence::Lookup::Answered
        && (line.starts_with("log error fetchShopId") || line.starts_with("handler ")
            || line.starts_with("log debug set(forKey: shop_id,"))) {
        finishLookup(*m_requests.at(m_sequence.request).answer);
        return true;
    }
    if (m_sequence.permission == Sequence::Permission::Known
        && (line.starts_with("log debug ADID: ") || line.starts_with("log debug set(forKey: adid,"))) {
        finishPermission();
        return true;
    }
    if (m_sequence.lookup == Sequence::Lookup::Done && m_sequence.permission == Sequence::Permission::Done
        && (line.starts_with("log debug get(forKey: tracking_event,")
            || line == "delete " + prefix + "tracking_event")) {
        endSequence();
        return true;
    }
    return false;
}

void Model::beginLookup()
{
    auto const stored = m_store.get("shop_id", m_expected.lines);
    if (auto const* shopId = stored ? stored->text() : nullptr) {
        m_shopId = *shopId;
        log("debug", "Shop ID exists : " + *shopId);
        m_sequence.lookup = Sequence::Lookup::Done;
        return;
    }
    auto const& endpoint = addresses().lookupEndpoint;
    auto const body = json(Dictionary { { "profile", m_isDev ? "dev" : "prd" }, { "api_key", m_sequence.apiKey } });
    log("debug", "fetchShopId Request URL: " + endpoint);
    log("debug", "fetchShopId Request Body: " + *body);
    m_expected.lines.push_back(describe({ .url = *platform::URL::parse(endpoint),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" }, { "Accept", "application/json" } },
        .httpBody = { *body } }));
    m_sequence.request = m_requests.size();
    m_requests.emplace_back();
    m_sequence.lookup = Sequence::Lookup::Waiting;
}

bool Model::isSilent(Answer const& answer) const
{
    if (!answer)
        return false;
    if (!answer->response.statusCode)
        return m_handler == 0;
    if (*answer->response.statusCode != 200)
        return false;
    auto const parsed = m_json.jsonObject(answer->data);
    return parsed && !shopIdIn(*parsed);
}

void Model::finishLookup(Answer const& answer)
{
    m_sequence.lookup = Sequence::Lookup::Done;
    if (!answer) {
        log("error", "fetchShopId Exception: " + answer.error().localizedDescription);
        return reportError("E200", lookupDescription(answer.error().localizedDescription));
    }
    if (!answer->response.statusCode)
        return reportError("E200", lookupDescription("Not a HTTP response"));
    auto const& bytes = answer->data.bytes;
    auto const code = std::to_string(*answer->response.statusCode);
    if (code != "200") {
        log("error", "fetchShopId Error " + code + " - Error Body: " + (isUTF8(bytes) ? bytes : "No error body"));
        return reportError("E200", lookupDescription("fetchShopId - " + code));
    }
    auto const parsed = m_json.jsonObject(answer->data);
    if (!parsed) {
        log("error", "fetchShopId Exception: " + parsed.error().localizedDescription);
        return reportError("E200", lookupDescription(parsed.error().localizedDescription));
    }
    auto const& shopId = *shopIdIn(*parsed);
    m_store.set(shopId, "shop_id", 86400.0, m_expected.lines);
    m_shopId = shopId;
    log("debug", "Shop ID: " + shopId);
}

void Model::finishPermission()
{
    m_sequence.permission = Sequence::Permission::Done;
    if (m_sequence.status != Status::Authorized) {
        m_adId = "unknown";
        return log("debug", "ADID: unknown (Status: " + std::to_string(static_cast<int>(m_sequence.status)) + ")");
    }
    m_adId = identifier;
    m_store.set(identifier, "adid", std::nullopt, m_expected.lines);
    log("debug", std::string("ADID: ") + identifier);
}

void Model::endSequence()
{
    sendTrackingData();
    m_isInitializing = false;
    promise(Queue::Main, { .kind = Block::Kind::Deferred });
}

std::optional<std::string> Model::adoptHop(Submission const& submission)
{
    using Permission = Sequence::Permission;
    Block block;
    if (submission.delay != 0) {
        if (submission.queue != Queue::Main || submission.delay != 0.1)
            return "the prompt is to be requested on the main queue, 0.1 seconds later";
        if (!m_isInitializing || m_sequence.permission != Permission::Waiting)
            return "the prompt was to be requested once, of an undecided user";
        if (!m_sequence.hasBeenActive)
            return "the prompt was to wait until the app is active";
        block.kind = Block::Kind::Prompt;
        m_sequence.permission = Permission::PromptScheduled;
    }
    m_blocks.emplace(submission.number, block);
    return std::nullopt;
}

}
