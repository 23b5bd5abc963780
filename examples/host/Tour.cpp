#include "examples/host/Tour.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"
#include "ZelvoraIOS/ZelvoraIOSView/ZelvoraWebView.h"
#include "ZelvoraIOS/ZelvoraStorage.h"
#include "examples/driving/Picture.h"
#include "examples/driving/engineOf.h"
#include "examples/host/findWidget.h"
#include "examples/host/saveTree.h"
#include "examples/host/texts.h"

#include <iostream>
#include <utility>

namespace zelvora::examples {

Tour::Tour(ShopHost& host, Options options)
    : m_host(host)
    , m_options(std::move(options))
    , m_service(m_options.servicePort, m_options.certificates)
{
}

bool Tour::run()
{
    makeSteps();
    std::cerr << (m_failed == 0 ? "All steps succeeded.\n" : "Steps that failed: " + std::to_string(m_failed) + "\n");
    return m_failed == 0;
}

bool Tour::step(std::string const& sentence, bool succeeded)
{
    std::cerr << (succeeded ? "  ok      " : "  FAILED  ") << sentence << '\n';
    if (!succeeded)
        ++m_failed;
    return succeeded;
}

bool Tour::stepUntil(std::string const& sentence, std::function<bool()> const& condition)
{
    return step(sentence, gtk::runMainLoopUntil(condition, patience));
}

void Tour::picture(std::string const& name, GtkWindow* window)
{
    auto const number = std::to_string(++m_pictures);
    auto file = m_options.pictures
        / (m_options.walk + "-" + std::string(number.size() < 2 ? "0" : "") + number + "-" + name + ".png");
    if (m_page)
        (void)page().waitUntilPainted();
    if (!takePicture(window ? window : m_host.window(), file))
        step("a picture is saved as " + file.string(), false);
    file.replace_extension(".tree");
    if (!m_options.trees.empty() && !saveTree(m_options.trees, file))
        step("the accessibility tree is saved as " + file.string(), false);
}

void Tour::answerPermission()
{
    GtkWindow* dialog = nullptr;
    auto const appears = [&] {
        dialog = findDialog(m_host.window());
        return dialog != nullptr;
    };
    if (!stepUntil("the question about tracking appears", appears))
        return;
    picture("permission", dialog);
    auto* const allow = findAllowButton(dialog);
    if (step("it has a button to allow", allow != nullptr))
        g_signal_emit_by_name(allow, "clicked");
}

void Tour::waitForIdentifiers()
{
    stepUntil("the advertising id is stored", [] { return ZelvoraStorage::getString("adid").has_value(); });
    stepUntil("the shop id arrives from the lookup", [] { return ZelvoraStorage::getValidShopId().has_value(); });
}

void Tour::expectShop()
{
    if (!stepUntil("the shop opens", [] { return ZelvoraSDK::shared().activeWebView() != nullptr; }))
        return;
    m_page = std::make_unique<Page>(engineOf(*ZelvoraSDK::shared().activeWebView()));
    step("its first page is complete", page().waitUntilReady("/v1/"));
}

void Tour::openPage(std::string const& name)
{
    (void)page().evaluate("(location.href = " + Page::literal(name) + " + location.search, true)");
    step("the page " + name + " is complete", page().waitUntilReady("/" + name));
}

void Tour::lookAtCollector()
{
    auto const address = m_service.address("collector") + "/?lang=" + std::string(languageTag()).substr(0, 2);
    (void)page().evaluate("(location.href = " + Page::literal(address) + ", true)");
    step("the collector shows what arrived", page().waitFor("document.querySelectorAll('.event').length > 0"));
}

void Tour::leaveShop()
{
    auto const before = m_host.dismissals();
    auto* const leave = findNamed(GTK_WIDGET(m_host.window()), "leave");
    if (step("the header has a button to leave", leave != nullptr))
        g_signal_emit_by_name(leave, "clicked");
    stepUntil("the app is told that the shop goes", [this, before] { return m_host.dismissals() > before; });
    forgetPage();
    stepUntil("the container is destroyed", [] { return ZelvoraSDK::shared().activeWebView() == nullptr; });
}

}
