// The toolkit in hosts that know nothing of it: each test runs such a host as a program of its own.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace norvel::tests {

namespace {

struct Outcome {
    int status = -1; // of the program's end; -1 if a signal ended it
    std::string output;
};

Outcome runCommand(const std::string& command) {
    Outcome outcome;
    std::FILE* pipe = popen(command.c_str(), "r"); // NOLINT(bugprone-command-processor)
    if (pipe == nullptr) return outcome;
    std::array<char, 512> part{};
    while (std::fgets(part.data(), static_cast<int>(part.size()), pipe) != nullptr)
        outcome.output += part.data();
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

// What the host program prints in one of its modes, warnings included; its exit must be clean.
std::string hostSays(const std::string& mode, const std::string& warnings = "2>&1") {
    const Outcome outcome =
        runCommand(std::string("timeout 60 ") + NR_TOOLKIT_HOST + " " + mode + " " + warnings);
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    return outcome.output;
}

std::string repeated(int times, const std::string& text) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

TEST(ToolkitStart, AHostWithoutAnEventLoopGetsAPaintedWindowAndExitsCleanly) {
    EXPECT_EQ(hostSays("use"), "use: 1 \n");
}

TEST(ToolkitStart, TheProcessLocaleIsTheSameAfterTheStartAndAfterAWindow) {
    EXPECT_EQ(hostSays("locale"), "start: 0 \nstart kept: 1 \nwindow: 1 \nwindow kept: 1 \n");
}

TEST(ToolkitStart, WithoutADisplayTheErrorIsClearAndALaterCallWithADisplaySucceeds) {
    const std::string no = " -1 Impossibile aprire la finestra di ricerca: nessuno schermo "
                           "disponibile (variabile DISPLAY)\n";
    EXPECT_EQ(hostSays("display"), "without:" + no + "again:" + no + "wrong:" + no + "with: 1 \n");
}

TEST(ToolkitStart, WhileAWindowIsOpenAnotherThreadGetsAnErrorAndTheWindowStays) {
    EXPECT_EQ(hostSays("busy"), "busy: 1 La finestra di ricerca è aperta in un altro thread\n");
}

TEST(ToolkitStart, WhileNoWindowIsOpenTheToolkitMovesToWhicheverThreadCalls) {
    const std::string turn = "first: 1 \nowns: 1 \nmain owns: 0 \nsecond: 1 \n";
    EXPECT_EQ(hostSays("threads"), repeated(3, turn + "main: 1 \n" + turn));
}

TEST(ToolkitStart, AProcessThatEndsWithAWindowOpenEndsCleanly) {
    EXPECT_EQ(hostSays("open"), "open: 0 \n");
}

TEST(ToolkitStart, AProcessThatEndsOnAnotherThreadEndsCleanly) {
    EXPECT_EQ(hostSays("exit-in-thread"), "use: 1 \n");
}

TEST(ToolkitStart, AHostThatNeverUsesItOnItsFirstThreadIsServed) {
    EXPECT_EQ(hostSays("thread-only"), "use: 1 \n");
}

TEST(ToolkitStart, AnOpenModelessWindowKeepsTheToolkitOnItsThread) {
    EXPECT_EQ(hostSays("modeless"), "open: 0 \nelsewhere: -1 La finestra di ricerca è aperta in "
                                    "un altro thread\n");
}

TEST(ToolkitStart, AHostWhoseOwnEventLoopRunsOnAnotherThreadGetsAClearError) {
    EXPECT_EQ(hostSays("foreign-loop"), "start: -1 La finestra di ricerca può essere aperta solo "
                                        "dal thread delle finestre del programma\n");
}

TEST(ToolkitStart, PythonLoadsItUsesItFromTwoThreadsAndEndsCleanly) {
    const Outcome outcome =
        runCommand(std::string("timeout 60 python3 ") + NR_SOURCE_DIR +
                   "/tests/platform/controls/start/host.py " + NR_TOOLKIT_GUEST + " 2>&1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "main True \nworker True \nmain True \nlocale kept True\n");
}

TEST(ToolkitStart, InAGtkHostTheHostsWindowsTakeNoInputMeanwhileAndItsLoopGoesOn) {
    // GTK itself complains that the toolkit wants its locale left alone after the host's start.
    EXPECT_EQ(hostSays("gtk-host", "2>/dev/null"),
              "before: sensitive\nmodal: insensitive\nshown: 1 \n"
              "after: sensitive\nhost loop: still running\n");
}

TEST(ToolkitStart, AHostThatRunsTheToolkitItselfKeepsItsApplicationItsLoopAndItsThread) {
    const Outcome outcome = runCommand(std::string("timeout 60 ") + NR_TOOLKIT_WX_HOST + " 2>&1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "host enabled meanwhile: 0 \nshown: 1 \nown application kept: 1 \n"
              "host enabled after: 1 \nanother thread: 0 La finestra di ricerca può essere aperta "
              "solo dal thread delle finestre del programma\n"
              "host ended its loop itself: 1 La finestra di ricerca può essere aperta solo dal "
              "thread delle finestre del programma\n");
}

} // namespace norvel::tests
