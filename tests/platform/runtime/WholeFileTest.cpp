#include "platform/runtime/WholeFile.h"

#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <random>

namespace norvel {
namespace {

namespace fs = std::filesystem;

class NewFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::random_device random;
        do
            folder = fs::temp_directory_path() / ("nr_file_" + std::to_string(random()));
        while (!fs::create_directory(folder));
        path = folder / "elenco.csv";
    }
    void TearDown() override { fs::remove_all(folder); }
    long files() const { return std::distance(fs::directory_iterator(folder), {}); }
    std::string contents() const { return readWholeFile(path, 1 << 20); }

    fs::path folder, path;
};

TEST_F(NewFileTest, IsThereOnceItIsCommittedAndNotBefore) {
    NewFile file(path);
    file.append("uno ");
    file.append("due");
    EXPECT_FALSE(fs::exists(path));
    file.commit(false);
    EXPECT_EQ(contents(), "uno due");
    EXPECT_EQ(files(), 1);
}

TEST_F(NewFileTest, LeavesTheOldContentsAndNothingElseWithoutACommit) {
    writeWholeFile(path, "vecchio");
    {
        NewFile file(path);
        file.append("nuovo");
    }
    EXPECT_EQ(contents(), "vecchio");
    EXPECT_EQ(files(), 1);
}

TEST_F(NewFileTest, TakesThePlaceOfWhatWasThere) {
    writeWholeFile(path, "vecchio e lungo");
    NewFile file(path);
    file.append("nuovo");
    file.commit(true);
    EXPECT_EQ(contents(), "nuovo");
}

TEST_F(NewFileTest, BytesCanBeWrittenOver) {
    NewFile file(path);
    file.append("0123456789");
    file.overwrite(2, "ab");
    file.append("!");
    file.commit(false);
    EXPECT_EQ(contents(), "01ab456789!");
}

TEST_F(NewFileTest, MayBeMoved) {
    NewFile file(path);
    file.append("x");
    NewFile other(std::move(file));
    other.commit(false);
    EXPECT_EQ(contents(), "x");
}

TEST_F(NewFileTest, AMissingFolderIsTold) {
    try {
        const NewFile file(folder / "manca" / "elenco.csv");
        FAIL();
    } catch (const Errore& error) {
        EXPECT_EQ(error.numero(), 76);
    }
}

TEST_F(NewFileTest, AFolderOfThatNameIsToldAndStays) {
    fs::create_directory(path);
    NewFile file(path);
    file.append("x");
    EXPECT_THROW(file.commit(false), Errore);
    EXPECT_TRUE(fs::is_directory(path));
}

} // namespace
} // namespace norvel
