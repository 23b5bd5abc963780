#include "examples/host/SoakPlan.h"

#include <array>
#include <random>
#include <span>

namespace zelvora::examples {

namespace {

// The members of a fault, after its target.
constexpr std::array refusals {
    R"("status": 500)",
    R"("status": 503)",
    R"("status": 503, "delay": 400)",
    R"("cut": "before-answer")",
    R"("cut": "mid-body")",
};

/// Draws from a generator. The library's distributions are not the same everywhere.
class Chance final {
public:
    Chance(std::uint32_t seed, int round)
    {
        std::seed_seq sequence { seed, static_cast<std::uint32_t>(round) };
        m_random.seed(sequence);
    }

    int below(int end) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(end)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool oneIn(int count) { return below(count) == 0; }
    std::string oneOf(std::span<char const* const> choices)
    {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    std::string delay() { return R"("delay": )" + std::to_string(between(100, 900)); }

private:
    std::mt19937 m_random;
};

std::string fault(std::string const& target, std::string const& members)
{
    return R"({ "target": ")" + target + R"(", )" + members + " }";
}

void planLookup(SoakRound& round, Chance& chance)
{
    round.initializes = chance.oneIn(4);
    round.forgetsShopId = round.initializes && chance.oneIn(2);
    if (!round.forgetsShopId || chance.oneIn(3))
        return;
    round.lookupFault = fault("lookup", chance.oneIn(4) ? chance.delay() : chance.oneOf(refusals));
}

void planCollector(SoakRound& round, Chance& chance)
{
    if (chance.oneIn(2))
        return;
    auto members = chance.oneIn(3) ? chance.delay() : chance.oneOf(refusals);
    // The page's close starts two uploads: both of them meet the fault, or the first one alone.
    if (chance.oneIn(2))
        members += R"(, "requests": 1)";
    round.collectorFault = fault("collector", members);
}

void planSite(SoakRound& round, Chance& chance)
{
    if (!chance.oneIn(6))
        return;
    round.siteMayFail = chance.oneIn(2);
    // What meets it is the page itself, or any of its parts.
    auto const requests = R"(, "requests": )" + std::to_string(chance.between(1, 6));
    round.siteFault = fault("site", (round.siteMayFail ? chance.oneOf(refusals) : chance.delay()) + requests);
}

void planPage(SoakRound& round, Chance& chance)
{
    static constexpr std::array pages { "index.html", "product.html", "cart.html", "bridge.html", "links.html" };
    round.events = chance.between(1, 4);
    round.togglesFooter = chance.oneIn(4);
    if (chance.oneIn(3))
        round.visitedPage = chance.oneOf(pages);
    if (chance.oneIn(5))
        round.death = chance.oneIn(2) ? SoakRound::Death::Killed : SoakRound::Death::Terminated;
}

void planClose(SoakRound& round, Chance& chance)
{
    round.asksBeforeClose = chance.oneIn(2);
    round.busyMilliseconds = round.asksBeforeClose ? chance.between(50, 900) : 0;
    round.diesWhileClosing = chance.oneIn(8);
}

}

SoakRound planRound(std::uint32_t seed, int number)
{
    Chance chance(seed, number);
    SoakRound round;
    round.name = std::to_string(number);
    planLookup(round, chance);
    planCollector(round, chance);
    planSite(round, chance);
    planPage(round, chance);
    planClose(round, chance);
    return round;
}

}
