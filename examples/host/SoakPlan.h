#pragma once

#include <cstdint>
#include <string>

namespace zelvora::examples {

/// What one round of a soak does and what goes wrong in it.
struct SoakRound {
    enum class Death : std::uint8_t { None, Killed, Terminated };

    std::string name;

    /// Orders for the service's control host; empty where the target works.
    std::string lookupFault;
    std::string collectorFault;
    std::string siteFault;
    /// Whether the fault may keep the page from ever being complete, as a late answer does not.
    bool siteMayFail = false;

    /// The app initializes the SDK again, with or without the shop id that it has.
    bool initializes = false;
    bool forgetsShopId = false;

    /// How many events the page saves before it closes the container; it saves one more with the close.
    int events = 1;
    bool togglesFooter = false;
    /// A page of the shop that is visited; empty for none.
    std::string visitedPage;
    /// How the page's web process dies while the page is shown.
    Death death = Death::None;

    /// The page asks for a value just before it closes the container, so that the answer comes while that disappears,
    /// and keeps itself busy, so that the answer's alert comes even later.
    bool asksBeforeClose = false;
    int busyMilliseconds = 0;
    /// The page's web process is killed while the container disappears. The engine may hand it to the next shop.
    bool diesWhileClosing = false;
};

/// The seed and the number decide everything. What the system makes of it in which order is not repeated.
[[nodiscard]] SoakRound planRound(std::uint32_t seed, int number);

}
