#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace norvel {
namespace {

namespace fs = std::filesystem;

class NewFilePosixTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "nr_file_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override { fs::remove_all(folder); }
    fs::path folder;
};

TEST_F(NewFilePosixTest, ALinkStaysAndWhatItNamesIsReplaced) {
    fs::create_directory(folder / "altrove");
    writeWholeFile(folder / "altrove" / "vero.csv", "vecchio");
    fs::create_symlink(folder / "altrove" / "vero.csv", folder / "elenco.csv");
    writeWholeFile(folder / "elenco.csv", "nuovo");
    EXPECT_TRUE(fs::is_symlink(folder / "elenco.csv"));
    EXPECT_EQ(readWholeFile(folder / "altrove" / "vero.csv", 100), "nuovo");
}

TEST_F(NewFilePosixTest, ADeviceIsWrittenItself) {
    fs::create_symlink("/dev/full", folder / "elenco.csv");
    NewFile file(folder / "elenco.csv");
    try {
        file.append("x");
        FAIL();
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 61);
    }
    EXPECT_TRUE(fs::is_character_file(folder / "elenco.csv"));
}

} // namespace
} // namespace norvel
