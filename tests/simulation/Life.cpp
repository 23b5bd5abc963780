#include "tests/simulation/Life.h"

#include "ZelvoraAdapters/shared/Journal/internal/ByteReader.h"
#include "ZelvoraAdapters/shared/Journal/internal/ValueCoding.h"
#include "tests/simulation/Past.h"
#include "tests/simulation/World.h"
#include "tests/support/TemporaryDirectory.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>
#include <vector>

namespace zelvora::simulation {

using platform::Dictionary;
using platform::Value;

namespace {

struct Pipe {
    int in = -1;
    int out = -1;
};

Pipe makePipe()
{
    std::array<int, 2> ends {};
    if (pipe(ends.data()) != 0) {
        std::perror("pipe");
        std::abort();
    }
    return { ends[0], ends[1] };
}

void writeAll(int file, std::string const& bytes)
{
    for (std::size_t written = 0; written < bytes.size();) {
        auto const count = write(file, bytes.data() + written, bytes.size() - written);
        if (count <= 0)
            std::abort();
        written += static_cast<std::size_t>(count);
    }
}

std::string readAll(int file)
{
    std::string bytes;
    std::array<char, 65536> buffer {};
    for (;;) {
        auto const count = read(file, buffer.data(), buffer.size());
        if (count <= 0)
            return bytes;
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

// A life that does not end is ended by a signal. It takes milliseconds, and with a sanitizer not a second.
void limitTime()
{
    rlimit const seconds { 20, 20 };
    setrlimit(RLIMIT_CPU, &seconds);
}

// Where a life is, in memory that its parent shares: readable after a crash too.
std::size_t& place()
{
    static auto* const s_place =
        new (mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
            std::size_t { 0 };
    return *s_place;
}

// Runs in the process of the life.
class Life final {
public:
    Life(Story const& story, Past past, int result, std::FILE* trace)
        : m_story(story)
        , m_result(result)
        , m_diesOften(past.journal.has_value())
        , m_world(*new World(std::move(past), trace))
    {
        m_world.onDeath = [this](std::optional<std::string> const& failure) { end(failure, place() + 1); };
    }

    [[noreturn]] void run(std::size_t from)
    {
        for (std::size_t step = from; step < m_story.steps.size(); ++step) {
            place() = step;
            if (m_story.steps[step].act == Act::EndApp)
                end(std::nullopt, step + 1);
            if (auto const failure = m_world.perform(m_story.steps[step]))
                end(failure, step);
            if (m_diesOften && Random(m_story.steps[step].dice + 2).oneIn(40))
                end(std::nullopt, step + 1);
        }
        end(m_world.finish(), m_story.steps.size());
    }

private:
    [[noreturn]] void end(std::optional<std::string> const& failure, std::size_t next)
    {
        Dictionary::Entries entries { { "next", next } };
        if (failure)
            entries.emplace_back("failure", *failure);
        else
            entries.emplace_back("past", valueOf(m_world.leave(Random(m_story.seed + next))));
        std::string bytes;
        shared::appendValue(bytes, Dictionary(std::move(entries)));
        writeAll(m_result, bytes);
        _exit(0);
    }

    Story const& m_story;
    int m_result;
    // A file is read only when an app begins.
    bool m_diesOften;
    World& m_world;
};

struct Outcome {
    Verdict verdict {};
    std::size_t next = 0;
    std::optional<Past> past {};
};

std::string describeEnd(int status)
{
    if (WIFSIGNALED(status))
        return "the process was ended by signal " + std::to_string(WTERMSIG(status));
    return "the process ended by itself with status " + std::to_string(WEXITSTATUS(status));
}

Outcome liveOnce(Story const& story, Past past, std::size_t from, Trace trace)
{
    auto const result = makePipe();
    auto const errors = makePipe();
    place() = from;
    std::fflush(stdout);
    auto const child = fork();
    if (child == 0) {
        close(result.in);
        close(errors.in);
        auto* const traceFile = trace == Trace::Yes ? fdopen(dup(STDERR_FILENO), "w") : nullptr;
        dup2(errors.out, STDERR_FILENO);
        limitTime();
        Life(story, std::move(past), result.out, traceFile).run(from);
    }
    close(result.out);
    close(errors.out);
    auto const bytes = readAll(result.in);
    auto const said = readAll(errors.in);
    close(result.in);
    close(errors.in);
    int status = 0;
    waitpid(child, &status, 0);

    shared::ByteReader reader(bytes);
    auto const value = shared::readValue(reader);
    if (status != 0 || !value)
        return { .verdict = { describeEnd(status) + ": " + said, place() } };
    auto const& entries = *value->dictionary();
    auto const next = static_cast<std::size_t>(*entries.find("next")->number());
    if (auto const* failure = entries.find("failure"))
        return { .verdict = { *failure->text(), next } };
    return { .next = next, .past = pastIn(*entries.find("past")) };
}

Story without(Story const& story, std::size_t first, std::size_t count)
{
    auto shorter = story;
    auto const begin = shorter.steps.begin() + static_cast<std::ptrdiff_t>(first);
    shorter.steps.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(count, shorter.steps.size() - first)));
    return shorter;
}

}

Verdict live(Story const& story, Store store, Trace trace)
{
    auto past = makePast(story.seed);
    std::optional<tests::TemporaryDirectory> directory;
    if (store == Store::Journal)
        past.journal = directory.emplace() / "preferences";
    for (std::size_t from = 0;;) {
        auto outcome = liveOnce(story, std::move(past), from, trace);
        if (outcome.verdict.failure || outcome.next >= story.steps.size())
            return outcome.verdict;
        from = outcome.next;
        past = *std::move(outcome.past);
        if (trace == Trace::Yes)
            std::fprintf(stderr, "     the app has died and is started again\n");
    }
}

Story shortened(Story story, Store store, Verdict verdict)
{
    if (verdict.step + 1 < story.steps.size()) {
        auto const cut = without(story, verdict.step + 1, story.steps.size());
        if (live(cut, store).failure)
            story = cut;
    }
    for (auto size = std::max<std::size_t>(story.steps.size() / 2, 1);; size /= 2) {
        for (std::size_t first = 0; first < story.steps.size();) {
            auto candidate = without(story, first, size);
            if (live(candidate, store).failure)
                story = std::move(candidate);
            else
                first += size;
        }
        if (size <= 1)
            return story;
    }
}

}
