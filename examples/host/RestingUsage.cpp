#include "examples/host/RestingUsage.h"

#include "ZelvoraAdapters/gtk/GLib/runMainLoopUntil.h"

#include <iomanip>
#include <iostream>

namespace zelvora::examples {

namespace {

// A leak of ten kibibytes in each of five hundred rounds. What the allocators, the engine's collector of garbage and
// the caches hold differs by half as much or more from one rest to the next.
constexpr long mostGrowthKiB = 5L * 1024;

std::string mebibytes(long kibibytes)
{
    constexpr long kibi = 1024;
    constexpr long tenths = 10;
    auto const rounded = kibibytes * tenths / kibi;
    return std::to_string(rounded / tenths) + "." + std::to_string(rounded % tenths) + " MiB";
}

bool isAtMost(Usage const& usage, Usage const& other)
{
    return usage.descriptors <= other.descriptors && usage.threads <= other.threads
        && usage.processes <= other.processes && usage.webProcesses <= other.webProcesses;
}

}

void RestingUsage::measure(int round)
{
    // Web processes take a moment to end. Unused threads, idle connections and caches, which are emptied after a
    // minute, take longer.
    constexpr double mostRest = 90;
    constexpr gint64 calm = gint64 { 3 } * G_USEC_PER_SEC;
    constexpr gint64 interval = G_USEC_PER_SEC / 4;
    auto measured = gint64 { 0 };
    auto changed = g_get_monotonic_time();
    auto const rests = [&] {
        auto const now = g_get_monotonic_time();
        if (now - measured < interval)
            return false;
        measured = now;
        auto const usage = measureUsage();
        if (!isAtMost(usage, m_latest) || !isAtMost(m_latest, usage))
            changed = now;
        m_latest = usage;
        auto const isCalm = now - changed > calm && m_objects.count() == 0;
        auto const isBack = isAtMost(usage, m_early) && usage.memoryKiB - m_early.memoryKiB <= mostGrowthKiB;
        return isCalm && (round <= earlyRounds || isBack);
    };
    (void)gtk::runMainLoopUntil(rests, mostRest);
    if (round <= earlyRounds) {
        m_early = m_latest;
        m_earlyNames = usageByName();
    }
    print(round);
}

void RestingUsage::print(int round)
{
    std::cerr << "after round " << std::setw(4) << round << ": " << mebibytes(m_latest.memoryKiB) << " of memory ("
              << mebibytes(m_latest.residentKiB) << " resident), " << m_latest.descriptors << " descriptors, "
              << m_latest.threads << " threads, " << m_latest.processes << " other processes (" << m_latest.webProcesses
              << " for pages), " << m_objects.count() << " live objects\n";
}

std::vector<std::string> RestingUsage::excess()
{
    std::vector<std::string> sentences;
    auto const compare = [&sentences](std::string const& what, int early, int now) {
        if (now > early)
            sentences.push_back(std::to_string(now) + " " + what + " instead of " + std::to_string(early));
    };
    compare("descriptors", m_early.descriptors, m_latest.descriptors);
    compare("threads", m_early.threads, m_latest.threads);
    compare("other processes", m_early.processes, m_latest.processes);
    compare("web processes", m_early.webProcesses, m_latest.webProcesses);
    if (auto const growth = m_latest.memoryKiB - m_early.memoryKiB; growth > mostGrowthKiB)
        sentences.push_back("memory grew by " + mebibytes(growth));
    if (m_objects.count() > 0)
        sentences.push_back("what was closed still lives: " + m_objects.describe());
    return sentences;
}

std::string RestingUsage::details() const
{
    std::string lines;
    for (auto const& [name, count] : usageByName()) {
        auto const early = m_earlyNames.find(name);
        auto const before = early == m_earlyNames.end() ? 0 : early->second;
        if (count > before)
            lines += "  " + name + ": " + std::to_string(count) + " instead of " + std::to_string(before) + "\n";
    }
    return lines;
}

}
