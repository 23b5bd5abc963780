#include "tests/simulation/World.h"

#include "ZelvoraAdapters/memory/UIKit/EdgePan.h"
#include "ZelvoraAdapters/memory/UIKit/View.h"
#include "ZelvoraAdapters/memory/WebKit/UserContentController.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "tests/simulation/Answers.h"
#include "tests/simulation/Grammar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace zelvora::simulation {

using platform::Value;
using Status = platform::ATTrackingAuthorizationStatus;
using State = platform::UIApplicationState;

namespace {

constexpr double headerHeight = 50;
constexpr double footerHeight = 60;

SimulatedPlatform& install(Past const& past, FileStore* file)
{
    auto made = std::make_unique<SimulatedPlatform>(
        memory::Options {
            .bundleIdentifier = past.bundleIdentifier,
            .now = past.now,
            .storedValues = past.stored,
            .trackingStatus = past.status,
        },
        file ? &file->preferences() : nullptr);
    auto& installed = *made;
    platform::Platform::install(std::move(made));
    return installed;
}

ssize_t appendPrinted(void* printed, char const* text, std::size_t size)
{
    static_cast<std::string*>(printed)->append(text, size);
    return static_cast<ssize_t>(size);
}

// What the SDK prints for its log lines.
std::string printedFor(Lines const& lines)
{
    std::string printed;
    for (auto const& line : lines) {
        if (line.starts_with("log "))
            printed += "[ZelvoraSDK-debug] " + line.substr(line.find(' ', 4) + 1) + "\n";
    }
    return printed;
}

std::string shortened(std::string const& line)
{
    constexpr std::size_t most = 300;
    return line.size() <= most ? line : line.substr(0, most) + "...";
}

}

class World::HostDelegate final : public ZelvoraSDK::ZelvoraSDKDelegate {
public:
    explicit HostDelegate(World& world) : m_world(world) { }

    // ZelvoraSDK::ZelvoraSDKDelegate
    bool zelvoraSDKShouldHandleBackAction(ZelvoraWebView&) override
    {
        m_world.m_platform.effects.add("delegate: should handle");
        return m_world.m_delegateConsents;
    }
    void zelvoraSDKWillDismiss() override
    {
        m_world.m_platform.effects.add("delegate: will dismiss");
        if (m_world.m_hook == HookKind::Uploads)
            ZelvoraSDK::shared().sendTrackingData();
        if (m_world.m_hook == HookKind::Starts) {
            m_world.m_hook = HookKind::Plain;
            (void)ZelvoraSDK::shared().start(m_world.m_navigation);
        }
    }

private:
    World& m_world;
};

World::World(Past past, std::FILE* trace)
    : m_file(past.journal ? std::make_unique<FileStore>(past) : nullptr)
    , m_platform(install(past, m_file.get()))
    , m_model(past.bundleIdentifier, past.stored, past.status, m_platform.jsonSerialization(), past.delivery)
    , m_trace(trace)
    , m_bundleIdentifier(past.bundleIdentifier)
    , m_lastEvent(past.lastEvent)
{
    m_platform.willRunBlock = [this](Queue queue, std::size_t number) { m_model.expectBlock(queue, number); };
    if (m_file)
        m_platform.standardUserDefaults().didWrite = [this](std::string const& key) { m_file->didWrite(key); };
    m_platform.memory.application().setOpenableSchemes({ "tel" });
    stdout =
        fopencookie(&m_printed, "w", { .read = nullptr, .write = &appendPrinted, .seek = nullptr, .close = nullptr });
    std::setvbuf(stdout, nullptr, _IONBF, 0);

    m_platform.notificationCenter().addObserver(
        m_observer, "ZelvoraFooterVisibilityChanged", [this](platform::Notification const& notification) {
            auto const* visible = notification.userInfo ? notification.userInfo->find("visible") : nullptr;
            auto const boolean = visible ? visible->boolean() : std::nullopt;
            m_platform.effects.add(std::string("notification: footer ")
                + (!boolean || notification.userInfo->size() != 1 ? "?" : (*boolean ? "visible" : "hidden")));
        });
    m_screens.emplace(plainScreen, std::make_shared<memory::ViewController>());
    m_screens.emplace(homeScreen, std::make_shared<memory::ViewController>());
    m_navigation = std::make_shared<memory::NavigationController>();
    m_navigation->pushViewController(m_screens.at(homeScreen), platform::Animated::No);
    m_screens.emplace(navigationStack, m_navigation);
    m_platform.effects.finish();
}

World::Failure World::perform(Step const& step)
{
    if (m_trace)
        std::fprintf(m_trace, "%4zu %s\n", m_steps, std::string(nameOf(step.act)).c_str());
    ++m_steps;
    if (m_file) {
        if (m_file->failure())
            return m_file->failure();
        m_file->breakOrHeal(Random(step.dice + 1));
    }
    if (step.act == Act::RunAll)
        return runAll();
    begin();
    if (auto failure = perform(step.act, Random(step.dice)))
        return failure;
    return end();
}

void World::begin()
{
    m_platform.effects.clear();
    m_printed.clear();
    // Until the step has ended, so that what a page is given last is still seen.
    m_kept = m_platform.memory.webViews();
    if (m_mayDie)
        m_storedBefore = m_model.store().entries();
    m_model.setSystem(m_platform.clock().now(), m_platform.application().applicationState() == State::Active,
        m_platform.trackingManager().trackingAuthorizationStatus());
}

World::Failure World::end()
{
    auto& effects = m_platform.effects;
    effects.finish();
    m_kept.clear();
    if (m_trace) {
        for (auto const& line : effects.lines())
            std::fprintf(m_trace, "         %s\n", shortened(line).c_str());
        for (auto const& [queue, delay, number] : effects.submissions())
            std::fprintf(m_trace, "         block %zu to %s\n", number, nameOf(queue));
        std::fflush(m_trace);
    }
    if (auto failure = m_model.check(effects))
        return failure;
    if (m_printed != printedFor(effects.lines()))
        return "standard output is not what was logged: " + m_printed;
    if (auto failure = lookAtStore(m_steps % 32 == 0))
        return failure;
    if (auto failure = lookAtFacade())
        return failure;
    if (!isAtRest())
        return std::nullopt;
    return m_model.checkRest(
        m_platform.memory.notificationCenter().observerCount(platform::UIApplication::didBecomeActiveNotification));
}

World::Failure World::lookAtStore(bool whole) const
{
    auto const& entries = m_model.store().entries();
    auto const differs = [&](std::string const& key) {
        auto const found = entries.find(key);
        auto const modelled = found == entries.end() ? std::nullopt : std::optional(found->second);
        return !isSame(m_platform.preferences().object(key), modelled);
    };
    for (auto const& line : m_platform.effects.lines()) {
        for (auto const* verb : { "write ", "delete " }) {
            if (line.starts_with(verb) && differs(line.substr(std::string_view(verb).size())))
                return "the preferences hold the wrong value under " + line.substr(std::string_view(verb).size());
        }
    }
    if (!whole)
        return std::nullopt;
    for (auto const& [key, value] : entries) {
        if (differs(key))
            return "the preferences hold the wrong value under " + key;
    }
    if (contents().size() != entries.size())
        return "the preferences hold entries that nobody wrote";
    return std::nullopt;
}

World::Failure World::lookAtFacade() const
{
    std::set<std::size_t> live;
    for (std::size_t number = 0; number < m_platform.webViews().size(); ++number) {
        if (!m_platform.webViews()[number].expired())
            live.insert(number);
    }
    if (live != m_model.livePages())
        return std::to_string(live.size()) + " pages live, where " + std::to_string(m_model.livePages().size())
            + " should";
    auto const& sdk = ZelvoraSDK::shared();
    if (sdk.isFooterVisible() != m_model.isFooterVisible())
        return "isFooterVisible is wrong";
    if (sdk.allowsSwipeBack() != m_model.allowsSwipeBack())
        return "allowsSwipeBack is wrong";
    if ((sdk.delegate() != nullptr) != m_model.hasDelegate())
        return "the delegate is wrong";
    auto const active = m_model.activePage();
    auto const url = active ? page(*active)->url() : std::nullopt;
    if (sdk.getCurrentUrl() != (url ? std::optional(url->absoluteString()) : std::nullopt))
        return "getCurrentUrl is wrong";
    return std::nullopt;
}

World::Failure World::runOne(Queue name)
{
    // A queue that is empty leaves its turn to another.
    for (auto const other : { Queue::Main, Queue::Global, Queue::Loader }) {
        if (queue(name).isEmpty())
            name = other;
    }
    if (queue(name).isEmpty())
        return std::nullopt;
    if (name == Queue::Loader)
        m_model.expectCompletion();
    else
        m_model.expectOwnBlock(name);
    (void)queue(name).runOne();
    return std::nullopt;
}

World::Failure World::runAll()
{
    constexpr std::size_t runaway = 5000;
    for (std::size_t turn = 0; turn < runaway; ++turn) {
        bool ran = false;
        for (auto const name : { Queue::Main, Queue::Global, Queue::Loader }) {
            if (queue(name).isEmpty())
                continue;
            ran = true;
            begin();
            if (auto failure = runOne(name))
                return failure;
            if (auto failure = end())
                return failure;
        }
        if (!ran)
            return std::nullopt;
    }
    return "the queues do not come to rest";
}

World::Failure World::finish()
{
    if (auto failure = runAll())
        return failure;
    if (auto failure = deliverAll())
        return failure;
    begin();
    if (auto failure = lookAtStore(true))
        return failure;
    return m_model.checkDelivery();
}

// With a service that accepts everything, whatever is queued arrives, unless JSON cannot hold the head of the queue.
World::Failure World::deliverAll()
{
    constexpr std::size_t enough = 8;
    for (std::size_t uploads = 0; uploads < enough; ++uploads) {
        begin();
        m_model.expectUpload();
        ZelvoraSDK::shared().sendTrackingData();
        if (auto failure = end())
            return failure;
        for (auto const request : m_model.unanswered()) {
            begin();
            answer(request, platform::URLSession::Answer { {}, { 200 } }, true);
            if (auto failure = end())
                return failure;
        }
        if (auto failure = runAll())
            return failure;
    }
    begin();
    m_model.expectUpload();
    ZelvoraSDK::shared().sendTrackingData();
    auto const& lines = m_platform.effects.lines();
    if (std::ranges::any_of(lines, [](auto const& line) { return line.starts_with("request "); }))
        return "events stay queued although the collector accepts them";
    return end();
}

World::Failure World::perform(Act act, Random random)
{
    auto& sdk = ZelvoraSDK::shared();
    switch (act) {
    case Act::RunMain:
        return runOne(Queue::Main);
    case Act::RunGlobal:
        return runOne(Queue::Global);
    case Act::RunLoader:
        return runOne(Queue::Loader);
    case Act::RunAll:
    case Act::EndApp:
        break;
    case Act::LetTimePass:
        letTimePass(random);
        break;
    case Act::SetClock:
        m_platform.memory.clock().set(
            { m_platform.clock().now().timeIntervalSince1970 + (static_cast<double>(random.below(4)) - 1.5) * 86400 });
        break;
    case Act::AnswerRequest:
        answerRequest(random);
        break;
    case Act::AnswerPrompt:
        answerPrompt(random);
        break;
    case Act::BecomeActive:
        m_model.expectActivation();
        m_platform.memory.application().setApplicationState(State::Active);
        break;
    case Act::BecomeInactive:
        m_platform.memory.application().setApplicationState(random.oneIn(2) ? State::Inactive : State::Background);
        break;
    case Act::EndWebProcess:
        endWebProcess(random);
        break;
    case Act::EndAppInWrite:
        m_mayDie = true;
        m_platform.standardUserDefaults().interruptAfter(random.below(6), [this] { dieInWrite(); });
        break;
    case Act::Initialize:
        initialize(random);
        break;
    case Act::Start:
        start(random);
        break;
    case Act::CreateWebView:
        createWebView();
        break;
    case Act::DropWebView:
        dropWebView(random);
        break;
    case Act::PushScreen:
        pushScreen();
        break;
    case Act::PopScreen:
        m_model.expectPop();
        m_navigation->popViewController(platform::Animated::Yes);
        break;
    case Act::DismissAll:
        m_model.expectDismissAll();
        m_screens.at(plainScreen)->dismiss(platform::Animated::Yes);
        break;
    case Act::ShowFooter: {
        bool const visible = random.oneIn(2);
        m_model.expectShowFooter(visible);
        sdk.setFooterVisible(visible);
        break;
    }
    case Act::AddAction:
        addAction(random);
        break;
    case Act::Upload:
        m_model.expectUpload();
        sdk.sendTrackingData();
        break;
    case Act::UseStorage:
        useStorage(random);
        break;
    case Act::ChangeDelegate:
        changeDelegate(random);
        break;
    case Act::ChangeNavigationHandler:
        changeNavigationHandler(random);
        break;
    case Act::ChangeSwipeBack: {
        bool const allows = random.oneIn(2);
        m_model.setAllowsSwipeBack(allows);
        sdk.setAllowsSwipeBack(allows);
        break;
    }
    case Act::SwipeBack:
        swipeBack(random);
        break;
    case Act::PostMessage:
        postMessage(random);
        break;
    case Act::Navigate:
        navigate(random);
        break;
    case Act::NavigateFrame:
        navigateFrame(random);
        break;
    case Act::Look:
        return look();
    }
    return std::nullopt;
}

void World::letTimePass(Random& random)
{
    static constexpr std::array<double, 7> lengths { 0.0625, 0.125, 1, 5, 30, 3600, 86400 };
    auto& clock = m_platform.memory.clock();
    auto const moments = m_model.store().momentsOfExpiry();
    if (random.oneIn(2) || moments.empty())
        return clock.advance(random.pick(lengths));
    // To the very moment when something expires, or just past it.
    auto const wait = random.pick(moments) - clock.now().timeIntervalSince1970;
    constexpr double tenDays = 864000;
    if (wait >= 0 && wait < tenDays)
        clock.advance(random.oneIn(2) ? wait : wait + 0.125);
}

void World::initialize(Random& random)
{
    static constexpr std::array<char const*, 4> keys { "user-1", "user 2&x=1", "", "사용자" };
    Configuration const configuration {
        .userKey = random.pick(keys),
        .apiKey = random.pick(keys),
        .isDev = random.oneIn(3),
        .allowsSwipeBack = !random.oneIn(3),
        .header = static_cast<Provider>(random.below(3)),
        .footer = random.oneIn(2) ? Provider::View : static_cast<Provider>(random.below(3)),
        .hasDelegate = !random.oneIn(3),
        .handler = random.oneIn(4) ? 0 : ++m_handlers,
        .handlerKind = random.oneIn(2) ? HandlerKind::Plain : static_cast<HandlerKind>(random.below(3)),
    };
    m_model.expectInitialize(configuration);
    if (configuration.hasDelegate && !m_delegate)
        m_delegate = std::make_shared<HostDelegate>(*this);
    auto const result = initialize(configuration);
    m_platform.effects.add(result ? "result ok" : "result " + std::string(result.error().code()));
}

ZelvoraSDK::Result World::initialize(Configuration const& configuration)
{
    return ZelvoraSDK::shared().initialize(configuration.userKey, configuration.apiKey, m_steps % 2 == 0,
        configuration.isDev, configuration.allowsSwipeBack, provider(configuration.header, "header", headerHeight),
        provider(configuration.footer, "footer", footerHeight), configuration.hasDelegate ? m_delegate : nullptr,
        handler(configuration));
}

ZelvoraSDK::CompletionHandler World::handler(Configuration const& configuration)
{
    if (configuration.handler == 0)
        return nullptr;
    return [this, number = configuration.handler, kind = configuration.handlerKind](
               std::optional<ZelvoraSDKError> const& error) {
        auto const code = error ? std::string(error->code()) : "no error";
        m_platform.effects.add("handler " + std::to_string(number) + ": " + code + " "
            + (error ? error->errorDescription().value_or("?") : ""));
        if (kind == HandlerKind::Retries && code == "E001")
            (void)initialize(makeRetry());
        if ((kind == HandlerKind::Retries && code == "E001") || (kind == HandlerKind::Starts && code == "E200"))
            (void)ZelvoraSDK::shared().start(m_screens.at(plainScreen));
    };
}

ZelvoraSDK::ViewProvider World::provider(Provider kind, std::string const& name, double height)
{
    if (kind == Provider::None)
        return nullptr;
    return [this, kind, name, height](platform::UIViewController&) -> std::shared_ptr<platform::UIView> {
        m_platform.effects.add(name);
        if (kind == Provider::Nothing)
            return nullptr;
        return std::make_shared<memory::View>(memory::IntrinsicSize { .height = height });
    };
}

void World::start(Random& random)
{
    auto const& stack = m_model.screens().stack();
    std::vector<ScreenId> candidates { navigationStack, homeScreen, plainScreen, plainScreen, stack.back(),
        m_model.screens().topOver(plainScreen), m_screens.begin()->first };
    auto const presenter = random.oneIn(25) ? noScreen : random.pick(candidates);
    m_model.expectStart(presenter);
    auto const result = ZelvoraSDK::shared().start(presenter == noScreen ? nullptr : screen(presenter));
    m_platform.effects.add(result ? "result ok" : "result " + std::string(result.error().code()));
}

void World::createWebView()
{
    auto const number = m_platform.webViews().size();
    m_model.expectCreateWebView();
    auto view = ZelvoraSDK::shared().createWebView();
    m_platform.effects.add(view ? "result view" : "result none");
    if (view)
        m_hostViews.emplace(number, std::move(view));
}

void World::dropWebView(Random& random)
{
    if (m_hostViews.empty())
        return;
    auto const dropped = std::next(m_hostViews.begin(), static_cast<std::ptrdiff_t>(random.below(m_hostViews.size())));
    m_model.dropWebView(dropped->first);
    m_hostViews.erase(dropped);
}

void World::pushScreen()
{
    auto const id = firstPushedScreen - static_cast<ScreenId>(m_screens.size());
    m_model.expectPushScreen(id);
    auto const made = m_screens.emplace(id, std::make_shared<memory::ViewController>()).first;
    m_navigation->pushViewController(made->second, platform::Animated::Yes);
}

void World::addAction(Random& random)
{
    static constexpr std::array<char const*, 5> names { "share", "pay", "close", "", "결제" };
    std::string const name = random.pick(names);
    Action const action { ++m_actions, static_cast<ActionKind>(random.below(5)) };
    m_model.expectAddAction(name, action);
    auto const note = [this](int number, std::optional<std::string> const& data) {
        m_platform.effects.add("action " + std::to_string(number) + ": " + (data ? "\"" + *data + "\"" : "nothing"));
    };
    auto& sdk = ZelvoraSDK::shared();
    sdk.addCustomAction(name, [&sdk, note, name, action](std::optional<std::string> const& data) {
        note(action.number, data);
        if (action.kind == ActionKind::HidesFooter)
            sdk.setFooterVisible(false);
        else if (action.kind == ActionKind::Uploads)
            sdk.sendTrackingData();
        else if (action.kind == ActionKind::SavesEvent)
            ZelvoraStorage::saveEventTrackingData({ { "by", "action" } });
        else if (action.kind == ActionKind::ReplacesItself) {
            sdk.addCustomAction(
                name, [note, action](std::optional<std::string> const& later) { note(-action.number, later); });
        }
    });
}

void World::useStorage(Random& random)
{
    auto const key = makeKey(random);
    switch (random.below(4)) {
    case 0:
        m_model.expectGet(key);
        m_platform.effects.add("result " + debugDescription(ZelvoraStorage::get(key)));
        return;
    case 1:
        m_model.expectRemove(key);
        ZelvoraStorage::remove(key);
        return;
    default: {
        auto const value = random.oneIn(4) ? std::nullopt : std::optional(makeValue(random));
        auto const lifetime = random.oneIn(3) ? std::nullopt : std::optional(makeLifetime(random));
        m_model.expectSet(value, key, lifetime);
        ZelvoraStorage::set(value, key, lifetime);
    }
    }
}

void World::changeDelegate(Random& random)
{
    m_delegateConsents = !random.oneIn(3);
    m_hook = random.oneIn(2) ? HookKind::Plain : static_cast<HookKind>(random.below(3));
    m_model.setHook(m_hook);
    auto const choice = random.below(3);
    if (choice == 0) {
        m_delegate = std::make_shared<HostDelegate>(*this);
        ZelvoraSDK::shared().setDelegate(m_delegate);
    } else if (choice == 1)
        ZelvoraSDK::shared().setDelegate(nullptr);
    else
        m_delegate = nullptr;
    m_model.setDelegate(choice == 0);
}

void World::changeNavigationHandler(Random& random)
{
    bool const present = !random.oneIn(3);
    m_model.setNavigationHandler(present);
    ZelvoraSDK::shared().setOnPageNavigation(present
            ? [this](std::string const& url) { m_platform.effects.add("navigated to " + url); }
            : ZelvoraSDK::PageNavigationHandler());
}

void World::answerRequest(Random& random)
{
    auto const waiting = m_model.unanswered();
    if (waiting.empty())
        return;
    auto const request = random.pick(waiting);
    auto const events = m_model.batch(request);
    auto made = events ? makeUploadAnswer(random) : makeLookupAnswer(random);
    // What was refused has not arrived; what failed on the way may have.
    auto const status = made ? made->response.statusCode.value_or(0) : 0;
    answer(request, std::move(made), (status >= 200 && status <= 299) || (!made && random.oneIn(2)));
}

void World::answer(std::size_t request, Model::Answer answer, bool hasArrived)
{
    if (hasArrived)
        m_model.received(arrivedIn(request));
    auto& loader = m_platform.memory.urlSession();
    if (!answer)
        loader.fail(answer.error(), request);
    else if (answer->response.statusCode)
        loader.answer(*answer->response.statusCode, answer->data.bytes, request);
    else
        loader.answerNotHTTP(answer->data.bytes, request);
    m_model.answered(request, std::move(answer));
}

std::set<int> World::arrivedIn(std::size_t request) const
{
    auto const body = m_platform.jsonSerialization().jsonObject(m_platform.urlSession().requests()[request].httpBody);
    auto const* data = body && body->dictionary() ? body->dictionary()->find("data") : nullptr;
    return data && data->array() ? numbersOf(*data->array()) : std::set<int>();
}

void World::answerPrompt(Random& random)
{
    auto& tracking = m_platform.memory.trackingManager();
    if (tracking.pendingRequestCount() == 0)
        return;
    auto const status = static_cast<Status>(random.below(4));
    m_model.promptAnswered(status);
    tracking.answer(status);
}

std::shared_ptr<memory::WebView> World::page(std::size_t number) const
{
    return m_platform.webViews().at(number).lock();
}

std::optional<std::size_t> World::pickPage(Random& random) const
{
    auto const live = m_model.livePages();
    if (live.empty())
        return std::nullopt;
    if (random.oneIn(2))
        return *live.rbegin();
    return *std::next(live.begin(), static_cast<std::ptrdiff_t>(random.below(live.size())));
}

void World::endWebProcess(Random& random)
{
    auto const number = pickPage(random);
    if (!number)
        return;
    m_endedPages.insert(*number);
    m_model.expectNavigation();
    page(*number)->setURL(std::nullopt);
}

void World::postMessage(Random& random)
{
    auto const number = pickPage(random);
    auto const event = ++m_lastEvent;
    if (!number || m_endedPages.contains(*number))
        return;
    auto const body = makeMessage(random, event);
    std::string const name = random.oneIn(40) ? "other" : "zelvora";
    if (m_trace)
        std::fprintf(m_trace, "         page %zu: %s\n", *number, shortened(debugDescription(body)).c_str());
    m_model.expectMessage(*number, name, body);
    if (page(*number)->postMessage(name, body) != (name == "zelvora" && m_model.isOwned(*number)))
        m_platform.effects.add("a message handler is missing, or one too many");
}

void World::navigate(Random& random)
{
    static constexpr std::array<char const*, 8> urls { "https://shop.example/cart", "HTTPS://shop.example/",
        "about:blank", "tel:123", "TEL:9", "data:text/html,x", "http://shop.example/a?b#c", "custom://x" };
    auto const number = pickPage(random);
    if (!number || !m_model.isOwned(*number))
        return;
    m_endedPages.erase(*number);
    m_model.expectNavigation();
    auto const target = page(*number);
    if (random.oneIn(5))
        target->setURL(platform::URL::verbatim("https://shop.example/#" + std::to_string(random.below(3))));
    else
        target->navigate(*platform::URL::verbatim(random.pick(urls)));
}

void World::navigateFrame(Random& random)
{
    static constexpr std::array<char const*, 4> urls { "https://frame.example/", "data:text/html,x", "tel:1",
        "no-scheme" };
    auto const number = pickPage(random);
    if (!number || !m_model.isOwned(*number))
        return;
    m_model.expectNavigation();
    page(*number)->navigateFrame(random.oneIn(5) ? std::nullopt : platform::URL::verbatim(random.pick(urls)));
}

void World::swipeBack(Random& random)
{
    auto const id = random.oneIn(2) ? m_model.screens().stack().back() : m_model.screens().topOver(plainScreen);
    if (!isContainer(id))
        return;
    auto const container = screen(id);
    m_model.expectSwipe(id, m_delegateConsents, page(static_cast<std::size_t>(id))->canGoBack());
    (void)memory::edgePan(container->view());
}

memory::DispatchQueue& World::queue(Queue name)
{
    if (name == Queue::Main)
        return m_platform.memory.mainQueue();
    return name == Queue::Global ? m_platform.memory.globalQueue() : m_platform.memory.urlSession().loaderQueue();
}

bool World::isAtRest()
{
    return queue(Queue::Main).isEmpty() && queue(Queue::Global).isEmpty() && queue(Queue::Loader).isEmpty();
}

std::shared_ptr<platform::UIViewController> World::screen(ScreenId id) const
{
    if (auto const found = m_screens.find(id); found != m_screens.end())
        return found->second;
    auto const& stack = m_model.screens().stack();
    if (auto const found = std::ranges::find(stack, id); found != stack.end())
        return m_navigation->viewControllers().at(static_cast<std::size_t>(found - stack.begin()));
    // Containers are asked for only if they are on top of the chain over the plain screen.
    auto top = m_screens.at(plainScreen);
    while (auto next = memory::peer(*top).presentedViewController())
        top = std::move(next);
    return top;
}

World::Failure World::look()
{
    if (!queue(Queue::Main).isEmpty())
        return std::nullopt;
    m_platform.memory.layout();
    for (auto const id : { m_model.screens().stack().back(), m_model.screens().topOver(plainScreen) }) {
        auto const container = std::dynamic_pointer_cast<ZelvoraIOSViewController>(screen(id));
        if (isContainer(id) != (container != nullptr))
            return "the wrong screen is on top";
        if (!container)
            continue;
        if (auto failure = lookAtFrames(id, *container))
            return failure;
    }
    return std::nullopt;
}

World::Failure World::lookAtFrames(ScreenId id, ZelvoraIOSViewController& container) const
{
    auto const& modelled = *m_model.container(id);
    auto const bounds = m_platform.memory.screen().bounds();
    auto const top = m_platform.memory.screen().safeAreaInsets().top + (modelled.hasHeader ? headerHeight : 0);
    bool const showsFooter = modelled.hasFooter && modelled.showsFooter;
    auto const bottom = bounds.height - (showsFooter ? footerHeight : 0);
    auto const& views = container.view().subviews();
    for (auto const& view : views) {
        if (std::dynamic_pointer_cast<ZelvoraWebView>(view)
            && memory::frame(*view) != platform::CGRect { 0, top, bounds.width, bottom - top })
            return "the page is not where it belongs";
    }
    if (views.size() != 1U + (modelled.hasHeader ? 1 : 0) + (modelled.hasFooter ? 1 : 0))
        return "the container holds the wrong number of views";
    if (modelled.hasFooter
        && (std::dynamic_pointer_cast<ZelvoraWebView>(views.back()) || views.back()->isHidden() == showsFooter))
        return "the footer is not in front, or hidden when it should be shown";
    return std::nullopt;
}

void World::dieInWrite()
{
    auto& effects = m_platform.effects;
    effects.finish();
    auto failure = m_model.checkBegun(effects);
    if (!failure)
        failure = lookAtHalfDoneStore();
    m_model.forgetUnsaved(contents());
    onDeath(std::move(failure));
}

World::Failure World::lookAtHalfDoneStore() const
{
    auto const left = contents();
    auto const& after = m_model.store().entries();
    std::set<std::string> keys;
    for (auto const* entries : { &left, &after, &m_storedBefore }) {
        for (auto const& [key, value] : *entries)
            keys.insert(key);
    }
    auto const valueIn = [](StoreModel::Entries const& entries, std::string const& key) {
        auto const found = entries.find(key);
        return found == entries.end() ? std::nullopt : std::optional(found->second);
    };
    for (auto const& key : keys) {
        auto const found = valueIn(left, key);
        if (found && !isSame(found, valueIn(after, key)) && !isSame(found, valueIn(m_storedBefore, key)))
            return "an interrupted write left the wrong value under " + key;
    }
    return std::nullopt;
}

Past World::leave(Random random) const
{
    static constexpr std::array<double, 5> pauses { 0, 1, 60, 3600, 100000 };
    Past past {
        .bundleIdentifier = m_bundleIdentifier,
        .stored = contents(),
        .now = { m_platform.memory.clock().now().timeIntervalSince1970 + random.pick(pauses) },
        .status = m_platform.memory.trackingManager().trackingAuthorizationStatus(),
        .lastEvent = m_lastEvent,
        .delivery = m_model.delivery(),
    };
    if (m_file)
        m_file->leave(past);
    return past;
}

memory::UserDefaults::Contents World::contents() const
{
    return m_file ? m_file->contents() : m_platform.memory.standardUserDefaults().contents();
}

}
