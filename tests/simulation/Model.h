#pragma once

#include "ZelvoraPlatform/Foundation/Dictionary.h"
#include "ZelvoraPlatform/Foundation/Error.h"
#include "ZelvoraPlatform/Foundation/JSONSerialization.h"
#include "ZelvoraPlatform/Foundation/URLSession.h"
#include "ZelvoraPlatform/Tracking/ATTrackingManager.h"
#include "tests/simulation/Effects.h"
#include "tests/simulation/ScreenModel.h"
#include "tests/simulation/StoreModel.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <expected>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zelvora::simulation {

/// What a host does in its completion handler, besides noting the error: with E200 it starts the shop, or with E001 it
/// initializes again and starts the shop.
enum class HandlerKind : std::uint8_t { Plain, Starts, Retries };

/// What a host does when a container is about to disappear, besides noting it. It starts the shop once only: the new
/// container may cover another one, which disappears.
enum class HookKind : std::uint8_t { Plain, Uploads, Starts };

/// The arguments of `initialize`.
struct Configuration {
    std::string userKey;
    std::string apiKey;
    bool isDev = false;
    bool allowsSwipeBack = false;
    Provider header = Provider::None;
    Provider footer = Provider::None;
    bool hasDelegate = false;
    /// 0 for none.
    int handler = 0;
    HandlerKind handlerKind = HandlerKind::Plain;
};

/// What a custom action does when it is called, besides being noted.
enum class ActionKind : std::uint8_t { Plain, HidesFooter, Uploads, ReplacesItself, SavesEvent };

struct Action {
    int number = 0;
    ActionKind kind = ActionKind::Plain;
};

/// What became of an event that is neither queued nor delivered, by a documented rule.
enum class Loss : std::uint8_t { OverlappingUploads, OverwrittenByPage, FailedWrite };

/// What an app's death leaves behind, apart from the preferences.
struct Delivery {
    std::set<int> saved;
    std::set<int> received;
    std::map<int, Loss> lost;
};

/// The SDK as its rules describe it. For each thing that can happen, the model says beforehand which effects it must
/// have, and `check` compares: the effects, in order, and the blocks that are submitted. Where the rules leave open how
/// many hops something takes (the initialization sequence), `check` accepts any, but each effect only where and when it
/// may come; and once all queues are at rest, everything must have come that was not waiting for something.
class Model final {
public:
    using Status = platform::ATTrackingAuthorizationStatus;
    using Answer = std::expected<platform::URLSession::Answer, platform::Error>;

    Model(std::optional<std::string> const& bundleIdentifier, StoreModel::Entries entries, Status status,
        platform::JSONSerialization const& json, Delivery delivery);

    /// Before every step: the time and what is known of the system.
    void setSystem(platform::Date now, bool isActive, Status status);

    // What happens. Each call says what the next `check` expects.
    void expectInitialize(Configuration const& configuration);
    void expectStart(ScreenId presenter);
    void expectCreateWebView();
    void expectPushScreen(ScreenId screen);
    void expectPop();
    void expectDismissAll();
    void expectShowFooter(bool visible);
    void expectAddAction(std::string const& name, Action action);
    void expectUpload();
    void expectSet(std::optional<platform::Value> const& value, std::string const& key, std::optional<double> expiry);
    void expectGet(std::string const& key);
    void expectRemove(std::string const& key);
    void expectMessage(std::size_t page, std::string const& name, platform::Value const& body);
    void expectNavigation();
    void expectSwipe(ScreenId container, bool delegateConsents, bool canGoBack);
    void expectActivation();
    /// A block runs: one of the platform's own, unless `expectBlock` follows with the number of one of the SDK's.
    void expectOwnBlock(Queue queue);
    void expectBlock(Queue queue, std::size_t number);
    /// The loader calls the completion of the request that was answered first.
    void expectCompletion();

    // What the world does that the SDK does not notice.
    void setDelegate(bool present) { m_hasDelegate = present; }
    void setHook(HookKind hook) { m_hook = hook; }
    void setNavigationHandler(bool present) { m_hasNavigationHandler = present; }
    void setAllowsSwipeBack(bool allows) { m_allowsSwipeBack = allows; }
    void dropWebView(std::size_t page) { m_hostViews.erase(page); }
    void promptAnswered(Status status);
    void answered(std::size_t request, Answer answer);
    /// The collector has these events.
    void received(std::set<int> const& events) { m_delivery.received.insert(events.begin(), events.end()); }

    /// Compares with what has happened. Absent if all is as it must be, else a sentence.
    [[nodiscard]] std::optional<std::string> check(Effects const& effects);
    /// As `check`, of a step that the app's death interrupts.
    [[nodiscard]] std::optional<std::string> checkBegun(Effects const& effects);
    /// The events that the dead app had not yet written down were never saved.
    void forgetUnsaved(StoreModel::Entries const& stored);
    /// Nothing is due on any queue.
    [[nodiscard]] std::optional<std::string> checkRest(std::size_t activationObservers) const;
    /// Every event is queued, delivered or lost by a documented rule.
    [[nodiscard]] std::optional<std::string> checkDelivery() const;

    // What must be so.
    [[nodiscard]] StoreModel const& store() const { return m_store; }
    [[nodiscard]] StoreModel& store() { return m_store; }
    [[nodiscard]] Delivery const& delivery() const { return m_delivery; }
    [[nodiscard]] ScreenModel const& screens() const { return m_screens; }
    [[nodiscard]] bool isFooterVisible() const { return m_isFooterVisible; }
    [[nodiscard]] bool allowsSwipeBack() const { return m_allowsSwipeBack; }
    [[nodiscard]] bool hasDelegate() const { return m_hasDelegate; }
    [[nodiscard]] std::map<std::string, Action> const& actions() const { return m_actions; }
    [[nodiscard]] std::set<std::size_t> const& hostViews() const { return m_hostViews; }
    /// The system web views that must exist.
    [[nodiscard]] std::set<std::size_t> livePages() const;
    /// Whether one of the SDK's views still has this page.
    [[nodiscard]] bool isOwned(std::size_t page) const;
    /// The active web view's page, if that view still exists.
    [[nodiscard]] std::optional<std::size_t> activePage() const;
    /// What the container must look like once the blocks that are due have run.
    [[nodiscard]] Container const* container(ScreenId id) const { return m_screens.container(id); }
    [[nodiscard]] std::vector<std::size_t> unanswered() const;
    /// Whether a request is an upload, and the numbers of its events.
    [[nodiscard]] std::optional<std::set<int>> batch(std::size_t request) const;

private:
    struct Block {
        enum class Kind : std::uint8_t { Hop, Prompt, Deferred, Present, Release, Close, Answer, Footer };

        Kind kind = Kind::Hop;
        ScreenId screen = noScreen;
        std::size_t page = 0;
        bool visible = false;
        std::string text {};
        std::string script {};
    };
    struct Promise {
        Queue queue = Queue::Main;
        double delay = 0;
        Block block {};
    };
    struct Expectation {
        Lines lines {};
        std::vector<Promise> promises {};
        /// The page may be navigated, with the effects that follow from the rules for URLs.
        bool navigates = false;
        bool mustNavigate = false;
        /// A part of the initialization sequence may run, on this queue.
        bool continues = false;
        Queue queue = Queue::None;
        /// Who waits for the app to become active may be woken.
        bool mayWake = false;
        /// Events may leave the queue.
        bool removesEvents = false;
        /// An answer whose number's text is open; the number.
        std::optional<double> number {};
    };
    struct Request {
        bool isUpload = false;
        std::size_t count = 0;
        std::set<int> events {};
        /// How often the queue had lost its head when the request was made.
        std::size_t generation = 0;
        std::optional<Answer> answer {};
    };
    /// The part of an initialization that runs by itself.
    struct Sequence {
        enum class Lookup : std::uint8_t { NotStarted, Waiting, Answered, Done };
        enum class Permission : std::uint8_t { Waiting, PromptScheduled, Prompted, Known, Done };

        std::string apiKey {};
        Lookup lookup = Lookup::NotStarted;
        Permission permission = Permission::Waiting;
        Status status = Status::NotDetermined;
        std::size_t request = 0;
        /// Whether the app was active at any moment since the beginning.
        bool hasBeenActive = false;
    };

    // Appends the effects of a call that the rules name, and carries it out.
    void log(char const* type, std::string const& text)
    {
        m_expected.lines.push_back(std::string("log ") + type + " " + text);
    }
    void promise(Queue queue, Block block, double delay = 0)
    {
        m_expected.promises.push_back({ queue, delay, std::move(block) });
    }
    void reportError(std::string const& code, std::string const& description);
    void initialize(Configuration const& configuration);
    void start(ScreenId presenter);
    void sendTrackingData();
    [[nodiscard]] platform::Array normalised(platform::Array const& batch) const;
    void completeUpload(Request const& request);
    void setFooterVisible(bool visible);
    void present(ScreenId presenter, std::string const& url);
    void loadContainer(std::string const& url);
    void makeWebView(std::string const& url);
    void disappear(ScreenId screen);
    void dismiss(ScreenId screen);
    [[nodiscard]] std::string entryURL() const;

    void handle(std::size_t page, platform::Dictionary const& message);
    void invoke(platform::Dictionary const& message);
    void sendCallback(std::size_t page, std::string const& callback, std::optional<platform::Value> const& value);
    [[nodiscard]] std::string encoded(std::optional<platform::Value> const& value) const;
    [[nodiscard]] std::optional<std::string> json(platform::Value const& value) const;

    // The sequence: what may begin with this line, on this queue. Whether anything did.
    bool continueSequence(std::string const& line, Queue queue);
    void beginLookup();
    void finishLookup(Answer const& answer);
    [[nodiscard]] bool isSilent(Answer const& answer) const;
    void finishPermission();
    void endSequence();
    [[nodiscard]] std::optional<std::string> adoptHop(Submission const& submission);

    enum class Extent : std::uint8_t { Whole, Begun };
    [[nodiscard]] std::optional<std::string> checkLines(Lines const& lines, Extent extent);
    [[nodiscard]] std::optional<std::string> checkSubmissions(std::vector<Submission> const& submissions);
    /// Follows the engine's own lines from `place` on.
    [[nodiscard]] std::optional<std::string> followNavigation(Lines const& lines, std::size_t place) const;
    void fillInNumber(Lines const& lines);
    void setAnswerText(std::string const& text);
    void noteLosses();
    void sweep();
    [[nodiscard]] std::set<ScreenId> heldByBlocks() const;

    platform::JSONSerialization const& m_json;
    StoreModel m_store;
    Delivery m_delivery;
    bool m_isActive = true;
    Status m_status;

    // The facade
    std::optional<std::string> m_userKey;
    std::optional<std::string> m_apiKey;
    std::optional<std::string> m_adId;
    std::optional<std::string> m_shopId;
    std::string m_webURL;
    bool m_isDev = false;
    int m_handler = 0;
    HandlerKind m_handlerKind = HandlerKind::Plain;
    HookKind m_hook = HookKind::Plain;
    bool m_isInitializing = false;
    ScreenId m_pending = noScreen;
    Provider m_header = Provider::None;
    Provider m_footer = Provider::None;
    bool m_allowsSwipeBack = false;
    bool m_hasDelegate = false;
    bool m_hasNavigationHandler = false;
    bool m_isFooterVisible = true;
    std::optional<std::size_t> m_activePage;
    std::map<std::string, Action> m_actions;

    ScreenModel m_screens;
    std::set<std::size_t> m_hostViews;
    std::size_t m_pagesMade = 0;

    Sequence m_sequence;
    std::vector<Request> m_requests;
    std::deque<std::size_t> m_completions;
    std::size_t m_queueGeneration = 0;
    std::map<std::size_t, Block> m_blocks;
    Expectation m_expected;
    platform::Array m_queuedBefore;
};

[[nodiscard]] bool isUTF8(std::string_view text);

/// What a host that tries again passes to `initialize`.
[[nodiscard]] Configuration makeRetry();

/// The numbers of the events in an array.
[[nodiscard]] std::set<int> numbersOf(platform::Array const& events);

}
