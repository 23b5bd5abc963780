#include "examples/host/Gallery.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/host/findWidget.h"

#include <iostream>

namespace zelvora::examples {

void Gallery::makeSteps()
{
    std::cerr << "\nA picture of every screen\n";
    step("the service is as at its start", service().order("/reset", R"({ "collected": true })"));
    showHome();
    showLoading();
    showShop();
    showDeveloperPages();
    showFailure();
    leaveShop();
    showHomeForDevelopers();
}

void Gallery::showHome()
{
    picture("home");
    host().initializeSDK();
    answerPermission();
    waitForIdentifiers();
}

bool Gallery::siteFails(char const* how)
{
    return service().order("/faults", R"({ "target": "site", )" + std::string(how) + "}");
}

void Gallery::showLoading()
{
    step("the site answers late", siteFails(R"("delay": 1500, "requests": 1)"));
    host().presentShop();
    auto const isThere = [this] { return findNamed(GTK_WIDGET(host().window()), "leave") != nullptr; };
    stepUntil("the app's header is there at once", isThere);
    // The spinner appears for who has to wait.
    (void)gtk::runMainLoopUntil([] { return false; }, 0.6);
    picture("loading");
    expectShop();
}

void Gallery::showShop()
{
    picture("shop");
    page().click("product-moon-jar");
    step("a product is shown", page().waitUntilReady("/product.html"));
    picture("product");
    page().click("add-to-cart");
    auto const isAdded = [] { return ZelvoraStorage::getEventTrackingData().size() >= 2; };
    stepUntil("it is added to the cart", isAdded);
    step("the page says so", page().waitFor("!document.getElementById('notice').hidden"));
    picture("added");
    openPage("cart.html");
    picture("cart");
}

void Gallery::showDeveloperPages()
{
    openPage("bridge.html");
    step("an event is queued", page().click("btn-save-event") && page().click("btn-get-events"));
    scrollTo("navigation");
    picture("bridge");
    step("the line for developers is switched on", page().click("debugging"));
    scrollTo("about");
    picture("bridge-end");
    page().click("debugging");
    openPage("links.html");
    picture("links");
    ZelvoraSDK::shared().sendTrackingData();
    stepUntil("events are uploaded", [] { return ZelvoraStorage::getEventTrackingData().isEmpty(); });
    lookAtCollector();
    picture("collector");
    (void)page().evaluate("(history.back(), true)");
    step("going back returns to the shop", page().waitUntilReady("/links.html"));
}

void Gallery::showFailure()
{
    step("the site cannot be reached", siteFails(R"("cut": "before-answer")"));
    page().click("to-shop");
    auto const button = [this] { return findNamed(GTK_WIDGET(host().window()), "try-again"); };
    stepUntil("the app says so", [&] { return button() && gtk_widget_get_mapped(button()); });
    picture("failure");
    step("the site is back", service().order("/reset", "{}"));
    g_signal_emit_by_name(button(), "clicked");
    step("trying again shows the page", page().waitUntilReady("/index.html"));
    stepUntil("the app's page is gone", [&] { return !gtk_widget_get_mapped(button()); });
}

void Gallery::showHomeForDevelopers()
{
    host().homePage().showDeveloperPart(true);
    picture("home-for-developers");
}

void Gallery::scrollTo(char const* id)
{
    (void)page().evaluate(
        "(document.getElementById(" + Page::literal(id) + ").scrollIntoView({ block: 'end' }), true)");
}

}
