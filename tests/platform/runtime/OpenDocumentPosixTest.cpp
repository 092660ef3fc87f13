#include "platform/runtime/OpenDocument.h"
#include "platform/runtime/WholeFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace norvel {
namespace {

namespace fs = std::filesystem;

// An opener of the test's own stands first in the search path and writes down what it is asked.
class OpenDocumentTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "nr_apri_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        const char* path = std::getenv("PATH");
        oldPath = path ? path : "";
        ::setenv("PATH", (folder.string() + ":" + oldPath).c_str(), 1);
        writeWholeFile(folder / "xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$1\" > \"" +
                                                folder.string() + "/detto.tmp\"\nmv \"" +
                                                folder.string() + "/detto.tmp\" \"" +
                                                folder.string() + "/detto\"\n");
        fs::permissions(folder / "xdg-open", fs::perms::owner_all);
    }
    void TearDown() override {
        ::setenv("PATH", oldPath.c_str(), 1);
        fs::remove_all(folder);
    }
    std::string said() const {
        for (int i = 0; i < 3000 && !fs::exists(folder / "detto"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return readWholeFile(folder / "detto", 10000);
    }

    fs::path folder;
    std::string oldPath;
};

TEST_F(OpenDocumentTest, APathWithBlanksAndQuotesArrivesWhole) {
    const std::string file = (folder / "l'elenco \"di\" $(touch x) `prova`; più & #1.csv").string();
    openDocument(file, nullptr);
    EXPECT_EQ(said(), "1\n" + file + "\n");
}

TEST_F(OpenDocumentTest, ARelativePathIsNoOption) {
    openDocument("--help", nullptr);
    EXPECT_EQ(said(), "1\n" + (fs::current_path() / "--help").string() + "\n");
}

TEST_F(OpenDocumentTest, LeavesNoProcessBehind) {
    openDocument(folder / "elenco.csv", nullptr);
    said();
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "nothing is this process's child any more";
}

TEST_F(OpenDocumentTest, WithoutAnOpenerNothingHappens) {
    ::setenv("PATH", "/nowhere", 1);
    openDocument(folder / "elenco.csv", nullptr);
    EXPECT_FALSE(fs::exists(folder / "detto"));
}

TEST(OpenDocument, ATestMayStandInForTheSystem) {
    std::vector<std::pair<fs::path, void*>> opened;
    int window = 0;
    DocumentOpener before = setDocumentOpener(
        [&](const fs::path& file, void* owner) { opened.emplace_back(file, owner); });
    openDocument("/x/y.csv", &window);
    EXPECT_TRUE(setDocumentOpener(std::move(before)));
    EXPECT_EQ(opened, (std::vector<std::pair<fs::path, void*>>{{"/x/y.csv", &window}}));
}

} // namespace
} // namespace norvel
