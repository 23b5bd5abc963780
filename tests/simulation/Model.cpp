#include "tests/simulation/Model.h"

#include "tests/simulation/SimulatedPlatform.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zelvora::simulation {

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

constexpr char const* initializingText = "SDK가 이미 초기화 중입니다. 이전 호출의 응답을 기다려주세요.";
constexpr char const* noShopIdText = "Shop ID가 초기화되지 않았습니다. API 연결 상태를 확인해주세요.";
constexpr char const* otherText = "알 수 없는 오류가 발생했습니다. ";
constexpr std::size_t batchLimit = 500;

bool isBlank(Value const* value)
{
    return !value || value->isNull() || (value->text() && value->text()->empty());
}

// What a URL in the simulation begins with, in lower case; empty if it has no scheme.
std::string schemeOf(std::string const& url)
{
    auto const end = url.find_first_of(":/?#");
    if (end == std::string::npos || url[end] != ':')
        return {};
    auto scheme = url.substr(0, end);
    std::ranges::transform(
        scheme, scheme.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    return scheme;
}

bool isWebURL(std::string const& url)
{
    constexpr std::array<std::string_view, 3> allowed { "http", "https", "about" };
    return std::ranges::find(allowed, schemeOf(url)) != allowed.end();
}

}

Configuration makeRetry()
{
    return { .userKey = "again", .apiKey = "again" };
}

std::set<int> numbersOf(Array const& events)
{
    std::set<int> numbers;
    for (auto const& event : events) {
        auto const* number = event.dictionary() ? event.dictionary()->find("n") : nullptr;
        if (number && number->number())
            numbers.insert(static_cast<int>(*number->number()));
    }
    return numbers;
}

Model::Model(std::optional<std::string> const& bundleIdentifier, StoreModel::Entries entries, Status status,
    platform::JSONSerialization const& json, Delivery delivery)
    : m_json(json)
    , m_store(bundleIdentifier, std::move(entries))
    , m_delivery(std::move(delivery))
    , m_status(status)
{
}

void Model::setSystem(platform::Date now, bool isActive, Status status)
{
    m_store.setNow(now);
    m_isActive = isActive;
    m_status = status;
    m_sequence.hasBeenActive = m_sequence.hasBeenActive || isActive;
    m_queuedBefore = m_store.queued();
    m_expected = {};
}

void Model::expectInitialize(Configuration const& configuration)
{
    if (m_isInitializing) {
        auto const told = m_handler != 0 ? m_handler : configuration.handler;
        if (told != 0)
            m_expected.lines.push_back("handler " + std::to_string(told) + ": E004 " + std::string(initializingText));
        m_expected.lines.emplace_back("result E004");
        return;
    }
    initialize(configuration);
    m_expected.lines.emplace_back("result ok");
}

void Model::initialize(Configuration const& configuration)
{
    m_isInitializing = true;
    m_userKey = configuration.userKey;
    m_apiKey = configuration.apiKey;
    m_isDev = configuration.isDev;
    m_allowsSwipeBack = configuration.allowsSwipeBack;
    m_header = configuration.header;
    m_footer = configuration.footer;
    m_hasDelegate = configuration.hasDelegate;
    m_webURL = (m_isDev ? addresses().developmentWebHost : addresses().productionWebHost) + "/v1";
    m_handler = configuration.handler;
    m_handlerKind = configuration.handlerKind;
    m_sequence = { .apiKey = configuration.apiKey, .hasBeenActive = m_isActive };
    if (m_status != Status::NotDetermined) {
        m_sequence.permission = Sequence::Permission::Known;
        m_sequence.status = m_status;
    }
    log("info", "Initialized");
    promise(Queue::Global, {});
}

void Model::expectStart(ScreenId presenter)
{
    std::string result = "result ok";
    if (presenter == noScreen)
        result = "result E300";
    else if (!m_isInitializing && !m_shopId)
        result = "result E001";
    start(presenter);
    m_expected.lines.push_back(std::move(result));
}

void Model::start(ScreenId presenter)
{
    if (presenter == noScreen)
        return reportError("E300", otherText + std::string("start was called without a view controller"));
    if (m_isInitializing) {
        // A screen that is replaced may be destroyed on the main thread only.
        if (m_pending != noScreen)
            promise(Queue::Main, { .kind = Block::Kind::Release, .screen = m_pending });
        log("debug", "SDK is still initializing. The activity will start automatically once ready.");
        m_pending = presenter;
        return;
    }
    // A shop id is only ever found by an initialization, which sets both keys.
    if (!m_shopId)
        return reportError("E001", noShopIdText);
    log("debug", "Final URL: " + entryURL());
    promise(Queue::Main, { .kind = Block::Kind::Present, .screen = presenter, .text = entryURL() });
}

std::string Model::entryURL() const
{
    return "https://" + *m_shopId + "." + m_webURL + "/?adid=" + m_adId.value_or("") + "&uKey=" + *m_userKey
        + "&rid=M-AD-SDK";
}

void Model::expectCreateWebView()
{
    if (!m_shopId || !m_apiKey || !m_userKey) {
        log("error", "SDK not fully initialized to get view");
        m_expected.lines.emplace_back("result none");
        return;
    }
    m_hostViews.insert(m_pagesMade);
    m_activePage = m_pagesMade;
    makeWebView(entryURL());
    m_expected.lines.emplace_back("result view");
}

void Model::makeWebView(std::string const& url)
{
    std::string line = "web view with functions";
    for (auto const& [name, action] : m_actions)
        line += " \"" + name + "\"";
    m_expected.lines.push_back(std::move(line));
    if (auto const parsed = platform::URL::parse(url))
        m_expected.lines.push_back("url in " + std::to_string(m_pagesMade) + ": " + parsed->absoluteString());
    ++m_pagesMade;
}

void Model::expectPushScreen(ScreenId screen)
{
    auto const covered = m_screens.push(screen);
    m_expected.lines.emplace_back("push");
    disappear(covered);
}

void Model::expectPop()
{
    auto const popped = m_screens.pop();
    if (popped == noScreen)
        return;
    m_expected.lines.emplace_back("pop");
    disappear(popped);
}

void Model::expectDismissAll()
{
    dismiss(plainScreen);
}

void Model::dismiss(ScreenId screen)
{
    auto const ended = m_screens.dismiss(screen);
    for (std::size_t count = 0; count < ended.size(); ++count)
        m_expected.lines.emplace_back("dismiss");
    if (!ended.empty())
        disappear(ended.back());
}

void Model::disappear(ScreenId screen)
{
    if (!isContainer(screen))
        return;
    if (m_hasDelegate)
        m_expected.lines.emplace_back("delegate: will dismiss");
    if (m_hasDelegate && m_hook == HookKind::Uploads)
        sendTrackingData();
    if (m_hasDelegate && m_hook == HookKind::Starts) {
        m_hook = HookKind::Plain;
        start(navigationStack);
    }
    sendTrackingData();
}

void Model::present(ScreenId presenter, std::string const& url)
{
    auto const made = static_cast<ScreenId>(m_pagesMade);
    if (presenter == navigationStack || m_screens.isOnStack(presenter)) {
        m_expected.lines.emplace_back("push");
        auto const covered = m_screens.push(made);
        loadContainer(url);
        disappear(covered);
        return;
    }
    if (!m_screens.mayPresent(presenter))
        return;
    m_expected.lines.emplace_back("present");
    auto const covered = m_screens.present(presenter, made);
    loadContainer(url);
    disappear(covered);
}

void Model::loadContainer(std::string const& url)
{
    if (m_header != Provider::None)
        m_expected.lines.emplace_back("header");
    if (m_footer != Provider::None)
        m_expected.lines.emplace_back("footer");
    m_screens.addContainer(static_cast<ScreenId>(m_pagesMade),
        { .swipesBack = m_allowsSwipeBack,
            .hasHeader = m_header == Provider::View,
            .hasFooter = m_footer == Provider::View,
            .showsFooter = m_isFooterVisible });
    m_activePage = m_pagesMade;
    makeWebView(url);
}

void Model::expectShowFooter(bool visible)
{
    setFooterVisible(visible);
}

void Model::setFooterVisible(bool visible)
{
    m_isFooterVisible = visible;
    m_expected.lines.emplace_back(visible ? "notification: footer visible" : "notification: footer hidden");
    for (auto const& [id, container] : m_screens.containers())
        promise(Queue::Main, { .kind = Block::Kind::Footer, .screen = id, .visible = visible });
}

void Model::expectAddAction(std::string const& name, Action action)
{
    m_actions.insert_or_assign(name, action);
}

void Model::expectUpload()
{
    sendTrackingData();
}

void Model::expectSet(std::optional<Value> const& value, std::string const& key, std::optional<double> expiry)
{
    m_store.set(value, key, expiry, m_expected.lines);
}

void Model::expectGet(std::string const& key)
{
    auto const value = m_store.get(key, m_expected.lines);
    m_expected.lines.push_back("result " + debugDescription(value));
}

void Model::expectRemove(std::string const& key)
{
    m_store.remove(key, m_expected.lines);
}

void Model::sendTrackingData()
{
    auto const batch = m_store.events(m_expected.lines).prefix(batchLimit);
    if (batch.isEmpty())
        return;
    auto const events = normalised(batch);
    auto const pretty = m_json.data(events, platform::JSONWritingOptions::PrettyPrinted);
    log("debug", "sendTrackingData events: " + (pretty ? pretty->bytes : debugDescription(Value(events))));
    auto const body = json(Dictionary { { "data", events }, { "profile", m_isDev ? "dev" : "prd" } });
    if (!body)
        return log("error", "sendTrackingData JSON Encoding Error");
    m_expected.lines.push_back(describe({ .url = *platform::URL::parse(addresses().trackingEndpoint),
        .httpMethod = "POST",
        .httpHeaderFields = { { "Content-Type", "application/json" } },
        .httpBody = { *body } }));
    m_requests.push_back(
        { .isUpload = true, .count = batch.size(), .events = numbersOf(batch), .generation = m_queueGeneration });
}

Array Model::normalised(Array const& batch) const
{
    std::vector<Value> events;
    for (auto const& event : batch) {
        auto const& stored = *event.dictionary();
        std::map<std::string, Value> members;
        for (auto const& [key, value] : stored)
            members.insert_or_assign(key, value.isNull() ? Value("") : value);
        if (isBlank(stored.find("eventId")))
            members.insert_or_assign("eventId", Value("0"));
        if (isBlank(stored.find("adid")))
            members.insert_or_assign("adid", Value(m_adId.value_or("")));
        events.emplace_back(Dictionary(Dictionary::Entries(members.begin(), members.end())));
    }
    return Array(events);
}

std::optional<std::string> Model::json(Value const& value) const
{
    auto const written = m_json.data(value, platform::JSONWritingOptions::None);
    return written ? std::optional(written->bytes) : std::nullopt;
}

void Model::completeUpload(Request const& request)
{
    auto const& answer = *request.answer;
    if (!answer)
        return log("error", "sendTrackingData Network Error: " + answer.error().localizedDescription);
    auto const status = answer->response.statusCode.value_or(-1);
    if (status < 200 || status > 299) {
        auto const& body = answer->data.bytes;
        return log("error",
            "sendTrackingData Failed (Status: " + std::to_string(status)
                + ", Body: " + (isUTF8(body) ? body : std::string()) + ")");
    }
    log("debug", "sendTrackingData Success - Sent " + std::to_string(request.count) + " events");
    bool const overlapped = request.generation != m_queueGeneration;
    auto const removed = m_store.removeEvents(request.count, m_expected.lines);
    ++m_queueGeneration;
    m_expected.removesEvents = true;
    if (!overlapped)
        return;
    for (auto const number : numbersOf(removed)) {
        if (!m_delivery.received.contains(number))
            m_delivery.lost.emplace(number, Loss::OverlappingUploads);
    }
}

void Model::expectNavigation()
{
    m_expected.navigates = true;
}

void Model::expectSwipe(ScreenId container, bool delegateConsents, bool canGoBack)
{
    auto const* shown = m_screens.container(container);
    if (!shown || !shown->swipesBack || !m_allowsSwipeBack)
        return;
    if (m_hasDelegate) {
        m_expected.lines.emplace_back("delegate: should handle");
        if (!delegateConsents)
            return;
    }
    if (canGoBack) {
        m_expected.navigates = true;
        m_expected.mustNavigate = true;
    } else if (m_screens.isOnStack(container))
        expectPop();
    else
        dismiss(container);
}

void Model::expectActivation()
{
    m_expected.mayWake = m_isInitializing && m_sequence.permission == Sequence::Permission::Waiting;
}

void Model::expectOwnBlock(Queue queue)
{
    // A page begins to load, or the tracking service calls back.
    (queue == Queue::Main ? m_expected.navigates : m_expected.continues) = true;
    m_expected.queue = queue;
}

void Model::expectBlock(Queue queue, std::size_t number)
{
    auto const block = m_blocks.extract(number).mapped();
    m_expected = { .queue = queue };
    switch (block.kind) {
    case Block::Kind::Hop:
        m_expected.continues = true;
        return;
    case Block::Kind::Prompt:
        m_expected.lines.emplace_back("prompt");
        m_sequence.permission = Sequence::Permission::Prompted;
        return;
    case Block::Kind::Deferred:
        if (m_pending != noScreen) {
            log("debug", "Executing deferred start after initialization");
            start(m_pending);
            m_pending = noScreen;
        }
        return;
    case Block::Kind::Present:
        return present(block.screen, block.text);
    case Block::Kind::Release:
        return;
    case Block::Kind::Close:
        sendTrackingData();
        if (block.screen != noScreen)
            dismiss(block.screen);
        return;
    case Block::Kind::Answer:
        m_expected.lines.push_back(
            "evaluate in " + std::to_string(block.page) + ": javascript:alert('" + block.text + "');");
        m_expected.lines.push_back("evaluate in " + std::to_string(block.page) + ": " + block.script);
        return;
    case Block::Kind::Footer:
        m_screens.setShowsFooter(block.screen, block.visible);
        return;
    }
}

void Model::expectCompletion()
{
    auto const number = m_completions.front();
    m_completions.pop_front();
    auto const& request = m_requests.at(number);
    if (request.isUpload)
        return completeUpload(request);
    using Lookup = Sequence::Lookup;
    m_sequence.lookup = isSilent(*request.answer) ? Lookup::Done : Lookup::Answered;
    m_expected.continues = true;
    m_expected.queue = Queue::Loader;
}

void Model::promptAnswered(Status status)
{
    m_sequence.permission = Sequence::Permission::Known;
    m_sequence.status = status;
}

void Model::answered(std::size_t request, Answer answer)
{
    m_requests.at(request).answer = std::move(answer);
    m_completions.push_back(request);
}

void Model::reportError(std::string const& code, std::string const& description)
{
    if (m_handler == 0)
        return;
    m_expected.lines.push_back("handler " + std::to_string(m_handler) + ": " + code + " " + description);
    if (m_handlerKind == HandlerKind::Starts && code == "E200")
        start(plainScreen);
    if (m_handlerKind == HandlerKind::Retries && code == "E001") {
        initialize(makeRetry());
        start(plainScreen);
    }
}

std::set<std::size_t> Model::livePages() const
{
    std::set<std::size_t> pages(m_hostViews);
    for (auto const& [id, container] : m_screens.containers())
        pages.insert(static_cast<std::size_t>(id));
    for (auto const& [number, block] : m_blocks) {
        if (block.kind == Block::Kind::Answer)
            pages.insert(block.page);
    }
    return pages;
}

bool Model::isOwned(std::size_t page) const
{
    return m_hostViews.contains(page) || m_screens.container(static_cast<ScreenId>(page));
}

std::optional<std::size_t> Model::activePage() const
{
    return m_activePage && isOwned(*m_activePage) ? m_activePage : std::nullopt;
}

std::vector<std::size_t> Model::unanswered() const
{
    std::vector<std::size_t> numbers;
    for (std::size_t number = 0; number < m_requests.size(); ++number) {
        if (!m_requests[number].answer)
            numbers.push_back(number);
    }
    return numbers;
}

std::optional<std::set<int>> Model::batch(std::size_t request) const
{
    auto const& found = m_requests.at(request);
    return found.isUpload ? std::optional(found.events) : std::nullopt;
}

std::optional<std::string> Model::check(Effects const& effects)
{
    auto failure = checkLines(effects.lines(), Extent::Whole);
    if (!failure)
        failure = checkSubmissions(effects.submissions());
    noteLosses();
    sweep();
    return failure;
}

std::optional<std::string> Model::checkBegun(Effects const& effects)
{
    auto failure = checkLines(effects.lines(), Extent::Begun);
    noteLosses();
    return failure;
}

void Model::forgetUnsaved(StoreModel::Entries const& stored)
{
    auto kept = numbersOf(m_queuedBefore);
    auto const found = stored.find(m_store.prefix() + "tracking_event");
    if (found != stored.end() && found->second.array())
        kept.merge(numbersOf(*found->second.array()));
    std::erase_if(m_delivery.saved, [&](int number) {
        return !kept.contains(number) && !m_delivery.received.contains(number) && !m_delivery.lost.contains(number);
    });
}

std::optional<std::string> Model::checkLines(Lines const& lines, Extent extent)
{
    fillInNumber(lines);
    std::size_t place = 0;
    auto const follow = [&]() -> std::optional<std::string> {
        for (; place < m_expected.lines.size(); ++place) {
            auto const& expected = m_expected.lines[place];
            if (place >= lines.size()) {
                if (extent == Extent::Begun)
                    return std::nullopt;
                return "missing: " + expected;
            }
            if (lines[place] != expected)
                return "expected: " + expected + "\n         but: " + lines[place];
        }
        return std::nullopt;
    };
    if (auto failure = follow())
        return failure;
    while (m_expected.continues && place < lines.size()) {
        if (!continueSequence(lines[place], m_expected.queue))
            return "out of turn on " + std::string(nameOf(m_expected.queue)) + ": " + lines[place];
        if (auto failure = follow())
            return failure;
    }
    if (m_expected.navigates)
        return followNavigation(lines, place);
    if (place < lines.size())
        return "nothing more was to happen, but: " + lines[place];
    return std::nullopt;
}

std::optional<std::string> Model::followNavigation(Lines const& lines, std::size_t place) const
{
    if (m_expected.mustNavigate && place == lines.size())
        return "the page was to go back";
    auto const rest = [&lines](std::size_t at, std::string_view prefix) -> std::optional<std::string> {
        if (at >= lines.size() || !lines[at].starts_with(prefix))
            return std::nullopt;
        return lines[at].substr(prefix.size());
    };
    while (place < lines.size()) {
        if (auto const changed = rest(place, "url in ")) {
            auto const colon = changed->find(": ");
            auto const page = static_cast<std::size_t>(std::stoul(*changed));
            ++place;
            if (!m_hasNavigationHandler || !isOwned(page))
                continue;
            if (rest(place, "navigated to ") != changed->substr(colon + 2))
                return "the host was to hear of " + *changed;
            ++place;
        } else if (rest(place, "no url in ")) {
            ++place;
        } else if (auto const opened = rest(place, "open ")) {
            if (schemeOf(*opened) != "tel" || rest(place + 1, "cancel ") != opened || isWebURL(*opened))
                return "not to be opened in the system: " + *opened;
            place += 2;
        } else if (auto const unknown = rest(place, "log error Cannot open external scheme: ")) {
            if (schemeOf(*unknown) == "tel" || rest(place + 1, "cancel ") != unknown || isWebURL(*unknown))
                return "not to be cancelled: " + *unknown;
            place += 2;
        } else if (auto const allowed = rest(place, "allow ")) {
            if (*allowed != "nothing" && !isWebURL(*allowed))
                return "not to be allowed: " + *allowed;
            ++place;
        } else
            return "not of a navigation: " + lines[place];
    }
    return std::nullopt;
}

std::optional<std::string> Model::checkSubmissions(std::vector<Submission> const& submissions)
{
    auto const& promises = m_expected.promises;
    auto const isRelease = [](Promise const& promise) { return promise.block.kind == Block::Kind::Release; };
    // A handler that starts again may have a screen released, before the sequence hops.
    auto const mayHop = (m_expected.continues || m_expected.mayWake) && std::ranges::all_of(promises, isRelease);
    if (mayHop ? submissions.size() < promises.size() : submissions.size() != promises.size())
        return std::to_string(promises.size()) + " blocks were to be submitted, but "
            + std::to_string(submissions.size()) + " were";
    if (m_expected.mayWake && submissions.size() > promises.size() + 1)
        return "more than one block was submitted when the app became active";
    for (std::size_t place = promises.size(); place < submissions.size(); ++place) {
        if (auto failure = adoptHop(submissions[place]))
            return failure;
    }
    for (std::size_t place = 0; place < promises.size(); ++place) {
        auto const& [queue, delay, number] = submissions[place];
        if (queue != promises[place].queue || delay != promises[place].delay)
            return "a block was submitted to " + std::string(nameOf(queue)) + ", not to "
                + nameOf(promises[place].queue);
        m_blocks.emplace(number, promises[place].block);
    }
    return std::nullopt;
}

void Model::fillInNumber(Lines const& lines)
{
    if (!m_expected.number)
        return;
    // Any text will do that reads back as the number.
    constexpr std::string_view prefix = "log debug Send callback data: ";
    for (auto const& line : lines) {
        if (!line.starts_with(prefix))
            continue;
        auto const text = line.substr(prefix.size());
        auto const read = m_json.jsonObject({ "[" + text + "]" });
        auto const* array = read ? read->array() : nullptr;
        if (array && array->size() == 1 && array->at(0).number() == m_expected.number)
            setAnswerText(text);
    }
}

void Model::noteLosses()
{
    auto const after = m_store.queued();
    auto const difference = after.differenceFrom(m_queuedBefore);
    if (m_expected.removesEvents || (difference && difference->dropped == 0))
        return;
    auto const left = numbersOf(after);
    for (auto const number : numbersOf(m_queuedBefore)) {
        if (!left.contains(number))
            m_delivery.lost.emplace(number, Loss::OverwrittenByPage);
    }
    ++m_queueGeneration;
}

std::set<ScreenId> Model::heldByBlocks() const
{
    std::set<ScreenId> held { m_pending };
    for (auto const& [number, block] : m_blocks)
        held.insert(block.screen);
    return held;
}

void Model::sweep()
{
    m_screens.sweep(heldByBlocks());
}

std::optional<std::string> Model::checkRest(std::size_t activationObservers) const
{
    using Lookup = Sequence::Lookup;
    using Permission = Sequence::Permission;
    bool const waits = m_isInitializing && m_sequence.permission == Permission::Waiting;
    if (activationObservers != (waits ? 1U : 0U))
        return std::to_string(activationObservers) + " observers wait for the app to become active";
    if (!m_isInitializing)
        return std::nullopt;
    if (m_sequence.lookup == Lookup::NotStarted || m_sequence.lookup == Lookup::Answered)
        return "the lookup stands still";
    if (m_sequence.permission == Permission::Known || (waits && m_isActive))
        return "the way to the advertising identifier stands still";
    if (m_sequence.lookup == Lookup::Done && m_sequence.permission == Permission::Done)
        return "the initialization does not end";
    return std::nullopt;
}

std::optional<std::string> Model::checkDelivery() const
{
    auto const queued = numbersOf(m_store.queued());
    for (auto const number : m_delivery.saved) {
        if (!queued.contains(number) && !m_delivery.received.contains(number) && !m_delivery.lost.contains(number))
            return "the event " + std::to_string(number) + " is neither queued nor delivered";
    }
    return std::nullopt;
}

}
