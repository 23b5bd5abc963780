// What an app's main thread waits for: a page's event until it is written, a call of a host's action, the opening of a
// web view with many actions registered, and `initialize`.

#include "ZelvoraAdapters/memory/Platform.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraAdapters/shared/Concurrency/ThreadPoolQueue.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraJavascriptInterface.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "ZelvoraPlatform/Foundation/Array.h"
#include "ZelvoraPlatform/Platform.h"
#include "ZelvoraPlatform/UIKit/UIViewController.h"
#include "ZelvoraPlatform/WebKit/WKScriptMessage.h"
#include "bench/Comparison.h"
#include "bench/JournalPlatform.h"
#include "bench/WriteFloor.h"
#include "bench/makeEvent.h"
#include "bench/seconds.h"
#include "tests/support/TemporaryDirectory.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

std::atomic<std::size_t> s_allocations = 0;

}

// NOLINTBEGIN(*-no-malloc,*-owning-memory): they count what the library's own would do
void* operator new(std::size_t size)
{
    s_allocations.fetch_add(1, std::memory_order_relaxed);
    if (auto* const memory = std::malloc(size))
        return memory;
    std::abort();
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
// NOLINTEND(*-no-malloc,*-owning-memory)

namespace {

using namespace zelvora;
using bench::Comparison;
using bench::makeEvent;
using bench::WriteFloor;
using platform::Array;
using platform::Dictionary;
using platform::WKScriptMessage;

constexpr std::size_t few = 100;
constexpr std::size_t many = 100'000;
constexpr std::size_t manyActions = 1000;

// Runs a block in memory when it is told to, and wakes a thread for each, as a real queue does.
class WakingQueue final : public platform::DispatchQueue {
public:
    explicit WakingQueue(platform::DispatchQueue& target) : m_target(target) { }

    // platform::DispatchQueue
    void async(Work work) override
    {
        m_target.async(std::move(work));
        m_threads.async([] { });
    }
    void asyncAfter(platform::TimeInterval delay, Work work) override { m_target.asyncAfter(delay, std::move(work)); }

private:
    platform::DispatchQueue& m_target;
    shared::ThreadPoolQueue m_threads;
};

class EventPlatform final : public bench::JournalPlatform {
public:
    using JournalPlatform::JournalPlatform;

    // platform::Platform
    [[nodiscard]] platform::DispatchQueue& globalQueue() override { return m_globalQueue; }

private:
    WakingQueue m_globalQueue { memory().globalQueue() };
};

void handle(WKScriptMessage const& message)
{
    ZelvoraJavascriptInterface::handle(message, nullptr, nullptr);
}

// Messages that are there already, because making them is the engine's part.
std::vector<WKScriptMessage> makeMessages()
{
    std::vector<WKScriptMessage> messages;
    for (std::size_t number = 0; number < few; ++number)
        messages.push_back({ "zelvora", Dictionary { { "action", "saveEvent" }, { "data", makeEvent(number) } } });
    return messages;
}

void enqueue(std::size_t count)
{
    Array events;
    for (std::size_t number = 0; number < count; ++number)
        events = events.appending(makeEvent(number));
    ZelvoraStorage::set(events, "tracking_event");
}

void printAllocations(std::string const& name, std::function<void()> const& work)
{
    constexpr std::size_t repetitions = 1000;
    auto const before = s_allocations.load();
    for (std::size_t i = 0; i < repetitions; ++i)
        work();
    bench::printFigure(name, static_cast<double>(s_allocations - before) / repetitions, "allocations");
}

void measureEvents(std::filesystem::path const& folder)
{
    // As many bytes as the event takes in the journal, without the record around it.
    constexpr std::size_t eventBytes = 117;
    WriteFloor const floor(folder / "event.floor", eventBytes);
    auto const messages = makeMessages();
    std::function<void()> const save = [&messages, number = std::size_t(0)]() mutable {
        handle(messages[++number % few]);
    };
    Comparison const comparison(401, 20);
    enqueue(few);
    comparison.print("an event, from handle to its write, 100 queued", save, "one write(2)", std::ref(floor));
    printAllocations("an event, from handle to its write", save);
    enqueue(many);
    comparison.print("an event, from handle to its write, 100,000 queued", save, "one write(2)", std::ref(floor));
    bench::Comparison(101, 1).printTimes(
        "an event, from handle to its write, after a pause", [&] { return bench::secondsAfterPause(save); },
        "one write(2)", [&] { return bench::seconds(floor, 50); });
}

void measureInitialization(std::filesystem::path const& folder, memory::Platform& platform)
{
    constexpr std::size_t bytes = 100;
    WriteFloor const floor(folder / "initialize.floor", bytes);
    ZelvoraStorage::saveShopId("shop");
    platform.trackingManager().setStatus(platform::ATTrackingAuthorizationStatus::Denied);
    // The upload that it starts is left without an answer.
    auto const finish = [&platform] { platform.runUntilIdle(); };
    auto const initialize = [] { (void)ZelvoraSDK::shared().initialize("user", "key", true, false, true); };
    Comparison const comparison(101, 1);
    comparison.preparedBy(finish).print(
        "initialize, 100,000 events queued", initialize, "one write(2) of 100 bytes", std::ref(floor));
    finish();
}

// What is opened stays for the next call, which closes it.
class Opening final {
public:
    explicit Opening(memory::Platform& platform) : m_platform(platform) { }

    void start()
    {
        (void)ZelvoraSDK::shared().start(m_presenter);
        m_platform.mainQueue().runAll();
    }
    void close()
    {
        m_presenter->dismiss(platform::Animated::No);
        m_platform.runUntilIdle();
    }
    void createWebView() { m_webView = ZelvoraSDK::shared().createWebView(); }

private:
    memory::Platform& m_platform;
    std::shared_ptr<memory::ViewController> m_presenter = std::make_shared<memory::ViewController>();
    std::shared_ptr<ZelvoraWebView> m_webView;
};

// Actions cannot be taken back, so what they cost is seen by the ratios to a third thing, before and after.
void measureActions(std::filesystem::path const& folder, memory::Platform& platform)
{
    auto& sdk = ZelvoraSDK::shared();
    WKScriptMessage const message { "zelvora",
        Dictionary { { "action", "invokeCustomAction" }, { "name", "action-500" }, { "data", "text" } } };
    WriteFloor const floor(folder / "actions.floor", 100);
    Opening opening(platform);
    Comparison const dispatches(101, 100);
    Comparison const openings = Comparison(101, 1);
    struct Costs {
        double dispatch;
        double start;
        double createWebView;
    };
    auto const measure = [&]() -> Costs {
        return {
            .dispatch = dispatches.measure([&] { handle(message); }, std::ref(floor)).median,
            .start =
                openings.preparedBy([&] { opening.close(); }).measure([&] { opening.start(); }, std::ref(floor)).median,
            .createWebView = openings.measure([&] { opening.createWebView(); }, std::ref(floor)).median,
        };
    };
    sdk.addCustomAction("action-500", [](auto const&) { });
    auto const one = measure();
    for (std::size_t number = 0; number < manyActions; ++number)
        sdk.addCustomAction("action-" + std::to_string(number), [](auto const&) { });
    auto const all = measure();
    bench::printFigure("calling an action, 1,000 registered", all.dispatch / one.dispatch, "times with one");
    bench::printFigure("start, 1,000 actions registered", all.start / one.start, "times with one");
    bench::printFigure(
        "createWebView, 1,000 actions registered", all.createWebView / one.createWebView, "times with one");
}

}

int main()
{
    tests::TemporaryDirectory const folder;
    auto owned = std::make_unique<EventPlatform>((folder / "events.journal").string());
    auto& platform = owned->memory();
    platform::Platform::install(std::move(owned));
    std::fprintf(stderr, "What the main thread waits for (in the docs: docs/performance.md)\n");
    measureEvents(folder.path());
    measureInitialization(folder.path(), platform);
    measureActions(folder.path(), platform);
    return EXIT_SUCCESS;
}
