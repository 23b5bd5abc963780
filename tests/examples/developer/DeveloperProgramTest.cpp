#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/gtk/LoopbackServer.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelvora::tests {

namespace {

struct Ending {
    int status = -1;
    std::vector<std::string> lines;

    [[nodiscard]] bool has(std::string const& text) const
    {
        return std::ranges::any_of(lines, [&text](auto const& line) { return line.contains(text); });
    }
    [[nodiscard]] std::string text() const
    {
        std::string text;
        for (auto const& line : lines)
            text += line + "\n";
        return text;
    }
};

class DeveloperProgramTest : public testing::Test {
protected:
    /// Starts the program on a folder or an address, with a script that is in a file.
    [[nodiscard]] std::unique_ptr<ChildProcess> start(std::string const& pages, std::filesystem::path const& script)
    {
        return start(pages, script, pictures());
    }
    [[nodiscard]] std::unique_ptr<ChildProcess> start(
        std::string const& pages, std::filesystem::path const& script, std::filesystem::path const& pictureFolder)
    {
        // What the program tells is on standard error, and the SDK's lines on standard output. It ends while threads of
        // the libraries still work, and what these hold then would be taken for leaks.
        auto const command = "ASAN_OPTIONS=\"$ASAN_OPTIONS:detect_leaks=0\" exec \"$0\" \"$@\" 2>&1 >/dev/null";
        return std::make_unique<ChildProcess>(std::vector<std::string> { "/bin/sh", "-c", command,
            ZELVORA_DEVELOPER_PROGRAM, pages, "--script", script.string(), "--pictures", pictureFolder.string(),
            "--data", (folder / "data").string(), "--action", "share" });
    }
    // The libraries write an empty line before each of their warnings, and a busy machine is silent for long.
    [[nodiscard]] static std::string nextLine(ChildProcess& program)
    {
        constexpr int mostEmpty = 6;
        std::string line;
        for (auto i = 0; i < mostEmpty && line.empty(); ++i)
            line = program.readLine();
        return line;
    }
    [[nodiscard]] static Ending endingOf(ChildProcess& program)
    {
        Ending ending;
        for (auto line = nextLine(program); !line.empty(); line = nextLine(program))
            ending.lines.push_back(line);
        auto const status = program.waitForChange();
        ending.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return ending;
    }
    [[nodiscard]] Ending play(std::string const& pages, std::filesystem::path const& script)
    {
        return endingOf(*start(pages, script));
    }
    [[nodiscard]] std::filesystem::path pictures() const { return folder / "pictures"; }

    TemporaryDirectory folder;
    std::filesystem::path const tests { ZELVORA_DEVELOPER_TESTS };
};

}

TEST_F(DeveloperProgramTest, AScriptThatHoldsEndsWellAndLeavesItsPictures)
{
    auto const ending = play((tests / "pages").string(), tests / "holds.script");
    EXPECT_EQ(ending.status, 0) << ending.text();
    for (auto const* name : { "cart", "dropped", "uploads", "dark-korean", "tablet", "narrow", "closed" })
        EXPECT_GT(std::filesystem::file_size(pictures() / (std::string(name) + ".png")), 1000U) << name;
}

TEST_F(DeveloperProgramTest, AnExpectationThatDoesNotHoldIsNamedWithItsLine)
{
    auto const ending = play((tests / "pages").string(), tests / "fails.script");
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.has("fails.script:5: expect queue 1: after 1 s: the queue has 0 events")) << ending.text();
    EXPECT_TRUE(std::filesystem::exists(pictures() / "failed-line-5.png"));
    EXPECT_FALSE(std::filesystem::exists(pictures() / "never.png"));
}

TEST_F(DeveloperProgramTest, AnAnswerForWhichThePageHasNoFunctionIsNotTakenAsReceived)
{
    auto const ending = play((tests / "pages").string(), tests / "lost.script");
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.has("lost.script:5: ")) << ending.text();
    EXPECT_TRUE(ending.has("nobody received the answer: the main frame has no function onCrat")) << ending.text();
}

TEST_F(DeveloperProgramTest, AScriptThatCannotBeReadIsNamedWithItsLineBeforeAnythingIsShown)
{
    auto const ending = play((tests / "pages").string(), folder.write("typo.script", "open\ntpa #add\n"));
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.has("typo.script:2: there is no command \"tpa\"")) << ending.text();
}

TEST_F(DeveloperProgramTest, AChangedFileIsShownAtOnce)
{
    auto const page = [this](std::string const& text) {
        (void)folder.write("pages/index.html", "<!DOCTYPE html><body><p>" + text + "</p></body>");
    };
    page("before");
    auto const script =
        folder.write("reload.script", "patience 2 min\nwait for text \"before\"\nwait for text \"after\"\n");
    auto const program = start((folder / "pages").string(), script);
    auto line = nextLine(*program);
    while (!line.empty() && !line.contains("wait for text \"before\""))
        line = nextLine(*program);
    EXPECT_FALSE(line.empty());
    page("after");
    auto const ending = endingOf(*program);
    EXPECT_EQ(ending.status, 0) << ending.text();
}

TEST_F(DeveloperProgramTest, APictureIsNoChangeOfThePagesThatItIsBeside)
{
    (void)folder.write("pages/index.html", "<!DOCTYPE html><body><p>here</p></body>");
    auto const script = folder.write("pictures.script",
        "patience 2 min\nwait for text \"here\"\nrun window.isOld = true\npicture one\npicture two\nwait until "
        "window.isOld\n");
    auto const program = start((folder / "pages").string(), script, folder / "pages/pictures");
    auto const ending = endingOf(*program);
    EXPECT_EQ(ending.status, 0) << ending.text();
}

TEST_F(DeveloperProgramTest, ThePagesOfAServerAreReachedWithTheQueryOfTheEntry)
{
    LoopbackServer server;
    auto const address = server.serve("/", [](SoupServerMessage* message) {
        static constexpr std::string_view page = "<!DOCTYPE html><body><p>elsewhere</p></body>";
        soup_server_message_set_status(message, 200, nullptr);
        soup_server_message_set_response(message, "text/html", SOUP_MEMORY_STATIC, page.data(), page.size());
    });
    auto const script = folder.write("server.script",
        "patience 2 min\nwait for text \"elsewhere\"\n"
        "wait until location.search.includes('adid=11111111-2222-4333-8444-555555555555')\n"
        "run ZelvoraSDKBridge.setItem('here', location.protocol)\n"
        "expect stored here \"http:\"\n");
    auto const ending = play(address.absoluteString(), script);
    EXPECT_EQ(ending.status, 0) << ending.text();
}

TEST_F(DeveloperProgramTest, AFolderWithoutAFirstPageIsRefused)
{
    std::filesystem::create_directories(folder / "empty");
    auto const ending = play((folder / "empty").string(), tests / "holds.script");
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(ending.has("has no index.html, which the app opens first.")) << ending.text();
}

}
