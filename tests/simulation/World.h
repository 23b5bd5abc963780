#pragma once

#include "ZelvoraAdapters/memory/UIKit/NavigationController.h"
#include "ZelvoraAdapters/memory/UIKit/ViewController.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraIOSViewController/ZelvoraIOSViewController.h"
#include "ZelvoraIOS/ZelvoraSDK/ZelvoraSDK.h"
#include "tests/simulation/FileStore.h"
#include "tests/simulation/Model.h"
#include "tests/simulation/Past.h"
#include "tests/simulation/SimulatedPlatform.h"
#include "tests/simulation/Story.h"

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zelvora::simulation {

/// One life of an app with the SDK in it, on a platform in memory: it carries out the steps of a story and compares
/// what the SDK does with what the model says. One per process, because the platform and the facade are.
class World final {
public:
    /// Installs the platform. `trace` receives every step with its effects; nullptr for none.
    World(Past past, std::FILE* trace);
    World(World const&) = delete;
    World& operator=(World const&) = delete;
    ~World() = delete;

    /// What went wrong, if anything did. An app that dies in the middle of the step calls `onDeath` and does not
    /// return.
    std::optional<std::string> perform(Step const& step);
    /// Lets everything that is due run, and looks whether all is delivered that must be.
    std::optional<std::string> finish();

    /// What the next life begins with.
    [[nodiscard]] Past leave(Random random) const;

    /// Called when the app dies in the middle of a write, with what is wrong with that, if anything.
    std::function<void(std::optional<std::string>)> onDeath;

private:
    class HostDelegate;

    using Failure = std::optional<std::string>;

    void begin();
    Failure end();
    Failure look();
    [[nodiscard]] Failure lookAtStore(bool whole) const;
    [[nodiscard]] Failure lookAtFacade() const;
    [[nodiscard]] Failure lookAtFrames(ScreenId id, ZelvoraIOSViewController& container) const;
    void dieInWrite();
    [[nodiscard]] Failure lookAtHalfDoneStore() const;

    Failure runOne(Queue queue);
    Failure runAll();
    Failure perform(Act act, Random random);

    void letTimePass(Random& random);
    void answerRequest(Random& random);
    void answer(std::size_t request, Model::Answer answer, bool hasArrived);
    Failure deliverAll();
    void answerPrompt(Random& random);
    void endWebProcess(Random& random);
    void initialize(Random& random);
    void start(Random& random);
    void createWebView();
    void dropWebView(Random& random);
    void pushScreen();
    void addAction(Random& random);
    void useStorage(Random& random);
    void changeDelegate(Random& random);
    void changeNavigationHandler(Random& random);
    void swipeBack(Random& random);
    void postMessage(Random& random);
    void navigate(Random& random);
    void navigateFrame(Random& random);

    /// The events that a request carries to the collector.
    [[nodiscard]] std::set<int> arrivedIn(std::size_t request) const;
    [[nodiscard]] memory::DispatchQueue& queue(Queue name);
    [[nodiscard]] bool isAtRest();
    [[nodiscard]] std::shared_ptr<memory::WebView> page(std::size_t number) const;
    [[nodiscard]] std::optional<std::size_t> pickPage(Random& random) const;
    [[nodiscard]] std::shared_ptr<platform::UIViewController> screen(ScreenId id) const;
    [[nodiscard]] ZelvoraSDK::CompletionHandler handler(Configuration const& configuration);
    ZelvoraSDK::Result initialize(Configuration const& configuration);
    [[nodiscard]] ZelvoraSDK::ViewProvider provider(Provider kind, std::string const& name, double height);

    [[nodiscard]] memory::UserDefaults::Contents contents() const;

    // Absent where the preferences live in memory.
    std::unique_ptr<FileStore> m_file;
    SimulatedPlatform& m_platform;
    Model m_model;
    std::FILE* m_trace;
    std::optional<std::string> m_bundleIdentifier;
    int m_lastEvent;
    std::string m_printed;
    std::shared_ptr<int> m_observer = std::make_shared<int>();
    std::size_t m_steps = 0;

    std::shared_ptr<memory::NavigationController> m_navigation;
    std::map<ScreenId, std::shared_ptr<platform::UIViewController>> m_screens;
    std::map<std::size_t, std::shared_ptr<ZelvoraWebView>> m_hostViews;
    std::shared_ptr<HostDelegate> m_delegate;
    bool m_delegateConsents = true;
    HookKind m_hook = HookKind::Plain;
    std::set<std::size_t> m_endedPages;
    int m_handlers = 0;
    int m_actions = 0;
    std::vector<std::shared_ptr<memory::WebView>> m_kept;
    bool m_mayDie = false;
    StoreModel::Entries m_storedBefore;
};

}
