#include "examples/host/Walk.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/driving/Picture.h"
#include "examples/driving/engineOf.h"
#include "examples/host/findWidget.h"

#include <iostream>

namespace zelvora::examples {

namespace {

constexpr double patience = 20;
// A product viewed, a product added to the cart, one event from the bridge page and one from its frame.
constexpr std::size_t eventsOfFirstWalk = 4;

}

Walk::Walk(ShopHost& host, Options options)
    : m_host(host)
    , m_options(std::move(options))
    , m_service(m_options.servicePort, m_options.certificates)
{
}

bool Walk::run()
{
    if (m_options.walk == "first")
        walkFirst();
    else
        walkSecond();
    std::cerr << (m_failed == 0 ? "All steps succeeded.\n" : "Steps that failed: " + std::to_string(m_failed) + "\n");
    return m_failed == 0;
}

void Walk::walkFirst()
{
    std::cerr << "\nFirst run: a fresh install\n";
    picture("home");
    printQueue("before");
    m_host.initializeSDK();
    answerPermission();
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
    lookAtCollector();
    closeShop();
    printQueue("after");
}

bool Walk::step(std::string const& sentence, bool succeeded)
{
    std::cerr << (succeeded ? "  ok      " : "  FAILED  ") << sentence << '\n';
    if (!succeeded)
        ++m_failed;
    return succeeded;
}

void Walk::picture(std::string const& name, GtkWindow* window)
{
    auto const number = std::to_string(++m_pictures);
    auto const file = m_options.pictures
        / (m_options.walk + "-" + std::string(number.size() < 2 ? "0" : "") + number + "-" + name + ".png");
    if (m_page)
        (void)page().waitUntilPainted();
    if (!takePicture(window ? window : m_host.window(), file))
        step("a picture is saved as " + file.string(), false);
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

void Walk::answerPermission()
{
    GtkWindow* dialog = nullptr;
    auto const appears = [&] {
        dialog = findDialog(m_host.window());
        return dialog != nullptr;
    };
    if (!step("the question about tracking appears", gtk::runMainLoopUntil(appears, patience)))
        return;
    picture("permission", dialog);
    auto* const allow = findAllowButton(dialog);
    if (step("it has a button to allow", allow != nullptr))
        g_signal_emit_by_name(allow, "clicked");
    auto const isKnown = [] { return ZelvoraStorage::getString("adid").has_value(); };
    step("the advertising id is stored", gtk::runMainLoopUntil(isKnown, patience));
    auto const hasShopId = [] { return ZelvoraStorage::getValidShopId().has_value(); };
    step("the shop id arrives from the lookup", gtk::runMainLoopUntil(hasShopId, patience));
}

void Walk::openShop()
{
    m_host.presentShop();
    auto const isShown = [] { return ZelvoraSDK::shared().activeWebView() != nullptr; };
    if (!step("the shop opens", gtk::runMainLoopUntil(isShown, patience)))
        return;
    m_page = std::make_unique<Page>(engineOf(*ZelvoraSDK::shared().activeWebView()));
    step("its first page is complete", page().waitUntilReady("/v1/"));
    auto const url = ZelvoraSDK::shared().getCurrentUrl().value_or("");
    step("the entry URL contains the user and the SDK: " + url,
        url.starts_with("https://hanok.shop.") && url.ends_with("&uKey=%ED%99%8D%EA%B8%B8%EB%8F%99&rid=M-AD-SDK"));
    picture("shop");
}

void Walk::openPage(std::string const& name)
{
    (void)page().evaluate("(location.href = " + Page::literal(name) + " + location.search, true)");
    step("the page " + name + " is complete", page().waitUntilReady("/" + name));
}

void Walk::buySomething()
{
    page().click("product-moon-jar");
    step("a product is shown", page().waitUntilReady("/product.html"));
    picture("product");
    page().click("add-to-cart");
    auto const isAdded = [] { return ZelvoraStorage::getEventTrackingData().size() >= 2; };
    step("viewing a product and adding it to the cart are queued as events", gtk::runMainLoopUntil(isAdded, patience));
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
    auto const isTold = [this] { return m_host.lastMessage() == R"({"from":"상점","count":2})"; };
    step("the app's custom action receives the page's object as JSON text", gtk::runMainLoopUntil(isTold, patience));

    page().click("btn-footer-hide");
    auto const isHidden = [] { return !ZelvoraSDK::shared().isFooterVisible(); };
    step("the page hides the footer", gtk::runMainLoopUntil(isHidden, patience));
    picture("bridge-without-footer");
    page().click("btn-footer-show");
    step("the page shows it again",
        gtk::runMainLoopUntil([] { return ZelvoraSDK::shared().isFooterVisible(); }, patience));
    picture("bridge");
}

void Walk::useFrame()
{
    auto const before = ZelvoraStorage::getEventTrackingData().size();
    page().click("btn-frame-save-event");
    auto const isQueued = [before] { return ZelvoraStorage::getEventTrackingData().size() == before + 1; };
    step("a frame from another origin queues an event", gtk::runMainLoopUntil(isQueued, patience));
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
        m_service.order("/faults", R"({ "target": "collector", "status": 503 })"));
    openPage("bridge.html");
    auto const before = m_host.dismissals();
    auto const queued = ZelvoraStorage::getEventTrackingData().size();
    page().click("btn-close");
    auto const isClosed = [this, before] { return m_host.dismissals() > before; };
    step("the page closes the shop", gtk::runMainLoopUntil(isClosed, patience));
    m_page.reset();
    auto const isGone = [] { return ZelvoraSDK::shared().activeWebView() == nullptr; };
    step("the container is destroyed", gtk::runMainLoopUntil(isGone, patience));
    auto const isTaken = [queued] { return ZelvoraStorage::getEventTrackingData().size() != queued; };
    if (queued > 0)
        step("events that the collector has refused stay queued", !gtk::runMainLoopUntil(isTaken, 1));
    m_host.homePage().showEventQueue();
    picture("home-again");
}

void Walk::uploadWhatWasLeft()
{
    auto const queued = ZelvoraStorage::getEventTrackingData().size();
    auto const before = m_service.collectedEvents().size();
    step("the collector is told to work again", m_service.order("/reset", "{}"));
    m_host.initializeSDK();
    auto const isEmpty = [] { return ZelvoraStorage::getEventTrackingData().isEmpty(); };
    step("the initialization uploads the queued events",
        gtk::runMainLoopUntil(isEmpty, patience) && m_service.collectedEvents().size() == before + queued);
    step("the user is not asked for permission again", !findDialog(m_host.window()));
    m_host.homePage().showEventQueue();
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

void Walk::lookAtCollector()
{
    (void)page().evaluate("(location.href = " + Page::literal(m_service.address("collector") + "/") + ", true)");
    step("the collector shows what arrived", page().waitFor("document.body.textContent.includes('frame_event')"));
    picture("collector");
    (void)page().evaluate("(history.back(), true)");
    step("going back returns to the shop", page().waitUntilReady("/cart.html"));
}

}
