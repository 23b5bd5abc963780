#include "examples/host/Walk.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/host/findWidget.h"

#include <iostream>

namespace zelvora::examples {

namespace {

// A product viewed, a product added to the cart, one event from the bridge page and one from its frame.
constexpr std::size_t eventsOfFirstWalk = 4;

}

void Walk::makeSteps()
{
    if (options().walk == "first")
        walkFirst();
    else
        walkSecond();
}

void Walk::walkFirst()
{
    std::cerr << "\nFirst run: a fresh install\n";
    picture("home");
    printQueue("before");
    host().initializeSDK();
    answerPermission();
    waitForIdentifiers();
    openShop();
    buySomething();
    useBridge();
    useFrame();
    followLinks();
    closeShop();
    printQueue("after");
}

void Walk::walkSecond()
{
    std::cerr << "\nSecond run: the app was started again\n";
    printQueue("before");
    step("the queue is as the first run left it", ZelvoraStorage::getEventTrackingData().size() == eventsOfFirstWalk);
    step("the shop id is still known", ZelvoraStorage::getValidShopId() == "hanok");
    uploadWhatWasLeft();
    openShop();
    readBackAfterRestart();
    visitCollector();
    closeShop();
    printQueue("after");
}

void Walk::printQueue(std::string const& when)
{
    auto const events = ZelvoraStorage::getEventTrackingData();
    std::cerr << "  The event queue " << when << ": " << events.size() << " events\n";
    for (auto const& event : events) {
        auto const* id = event.dictionary()->find("eventId");
        std::cerr << "    - " << (id ? debugDescription(*id) : "(no event id)") << '\n';
    }
}

void Walk::openShop()
{
    host().presentShop();
    expectShop();
    auto const url = ZelvoraSDK::shared().getCurrentUrl().value_or("");
    step("the entry URL contains the user and the SDK: " + url,
        url.starts_with("https://hanok.shop.") && url.ends_with("&uKey=%ED%99%8D%EA%B8%B8%EB%8F%99&rid=M-AD-SDK"));
    picture("shop");
}

void Walk::buySomething()
{
    page().click("product-moon-jar");
    step("a product is shown", page().waitUntilReady("/product.html"));
    picture("product");
    page().click("add-to-cart");
    auto const isAdded = [] { return ZelvoraStorage::getEventTrackingData().size() >= 2; };
    stepUntil("viewing a product and adding it to the cart are queued as events", isAdded);
    openPage("cart.html");
    step("the cart is read back from the app", page().waitFor("document.getElementById('line-moon-jar')"));
    picture("cart");
}

bool Walk::clickAndExpect(std::string const& id, std::string const& answer)
{
    page().click(id);
    return page().waitFor("document.getElementById('log').textContent.includes(" + Page::literal(answer) + ")");
}

void Walk::useBridge()
{
    openPage("bridge.html");
    step("a value is stored and read back",
        page().click("btn-set-item") && clickAndExpect("btn-get-item", "← onBridgeItem(\""));
    step("a removed value is read as null",
        page().click("btn-remove-item") && clickAndExpect("btn-get-item", "← onBridgeItem(null)"));
    page().click("btn-set-item");
    step("an event is queued and the queue is read back",
        page().click("btn-save-event") && clickAndExpect("btn-get-events", "← onBridgeEvents(["));
    page().click("btn-custom-object");
    auto const isTold = [this] { return host().lastMessage() == R"({"from":"상점","count":2})"; };
    stepUntil("the app's custom action receives the page's object as JSON text", isTold);

    page().click("btn-footer-hide");
    auto const isHidden = [] { return !ZelvoraSDK::shared().isFooterVisible(); };
    stepUntil("the page hides the footer", isHidden);
    picture("bridge-without-footer");
    page().click("btn-footer-show");
    stepUntil("the page shows it again", [] { return ZelvoraSDK::shared().isFooterVisible(); });
    picture("bridge");
}

void Walk::useFrame()
{
    auto const before = ZelvoraStorage::getEventTrackingData().size();
    page().click("btn-frame-save-event");
    auto const isQueued = [before] { return ZelvoraStorage::getEventTrackingData().size() == before + 1; };
    stepUntil("a frame from another origin queues an event", isQueued);
}

void Walk::followLinks()
{
    constexpr char const* elsewhere = "!location.pathname.endsWith('/links.html')";
    openPage("links.html");
    picture("links");
    step("links to other apps do not navigate the page",
        page().click("link-unknown") && page().click("link-tel") && !page().waitFor(elsewhere, 1));
    page().click("link-https-upper");
    step("a link with an upper-case scheme is followed", page().waitUntilReady("/index.html"));
}

void Walk::closeShop()
{
    step("the collector is told to refuse events",
        service().order("/faults", R"({ "target": "collector", "status": 503 })"));
    openPage("bridge.html");
    auto const before = host().dismissals();
    auto const queued = ZelvoraStorage::getEventTrackingData().size();
    page().click("btn-close");
    auto const isClosed = [this, before] { return host().dismissals() > before; };
    stepUntil("the page closes the shop", isClosed);
    forgetPage();
    auto const isGone = [] { return ZelvoraSDK::shared().activeWebView() == nullptr; };
    stepUntil("the container is destroyed", isGone);
    auto const isTaken = [queued] { return ZelvoraStorage::getEventTrackingData().size() != queued; };
    if (queued > 0)
        step("events that the collector has refused stay queued", !gtk::runMainLoopUntil(isTaken, 1));
    host().homePage().showDeveloperPart(true);
    picture("home-again");
}

void Walk::uploadWhatWasLeft()
{
    auto const queued = ZelvoraStorage::getEventTrackingData().size();
    auto const before = service().collectedEvents().size();
    step("the collector is told to work again", service().order("/reset", "{}"));
    host().initializeSDK();
    auto const isEmpty = [] { return ZelvoraStorage::getEventTrackingData().isEmpty(); };
    step("the initialization uploads the queued events",
        gtk::runMainLoopUntil(isEmpty, patience) && service().collectedEvents().size() == before + queued);
    step("the user is not asked for permission again", !findDialog(host().window()));
    host().homePage().showEventQueue();
    host().homePage().showDeveloperPart(true);
    picture("uploaded");
}

void Walk::readBackAfterRestart()
{
    openPage("bridge.html");
    step("the value that was stored before the restart is read", clickAndExpect("btn-get-item", "← onBridgeItem(\""));
    openPage("cart.html");
    step("the cart is unchanged", page().waitFor("document.getElementById('line-moon-jar')"));
    picture("cart");
}

void Walk::visitCollector()
{
    lookAtCollector();
    step("the frame's event is among them", page().waitFor("document.body.textContent.includes('frame_event')"));
    picture("collector");
    (void)page().evaluate("(history.back(), true)");
    step("going back returns to the shop", page().waitUntilReady("/cart.html"));
}

}
