// What only this system does with files that others have open.
#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <random>
#include <thread>
#include <windows.h>

namespace norvel {
namespace {

namespace fs = std::filesystem;

// A file that another program has open and lets nobody else have.
class Held {
  public:
    explicit Held(const fs::path& path)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
    }
    ~Held() { letGo(); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    void letGo() {
        if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE file_;
};

class NewFileWin32Test : public ::testing::Test {
  protected:
    void SetUp() override {
        std::random_device random;
        do
            folder = fs::temp_directory_path() / ("nr_file_" + std::to_string(random()));
        while (!fs::create_directory(folder));
        path = folder / "elenco.csv";
        writeWholeFile(path, "vecchio");
    }
    void TearDown() override {
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        fs::remove_all(folder);
    }
    std::int64_t failure() const {
        try {
            writeWholeFile(path, "nuovo");
            return 0;
        } catch (const Errore& error) {
            return error.numero();
        }
    }
    void expectAsItWas() const {
        EXPECT_EQ(readWholeFile(path, 100), "vecchio");
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
    }
    fs::path folder, path;
};

TEST_F(NewFileWin32Test, AFileThatAnotherProgramKeepsOpenIsRefusedAndStays) {
    {
        const Held held(path);
        EXPECT_EQ(failure(), 70);
    }
    expectAsItWas();
}

TEST_F(NewFileWin32Test, AFileThatAnotherProgramHoldsForAMomentIsReplaced) {
    Held held(path);
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(120));
        held.letGo();
    });
    EXPECT_EQ(failure(), 0);
    other.join();
    EXPECT_EQ(readWholeFile(path, 100), "nuovo");
}

TEST_F(NewFileWin32Test, AFileThatIsProtectedIsRefusedAndStays) {
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(failure(), 70);
    expectAsItWas();
}

// Two machines may count alike in one folder of a server's.
TEST_F(NewFileWin32Test, NamesBesideItThatAreTakenAreLeftAlone) {
    constexpr int taken = 90;
    const auto beside = [&](int count) {
        return fs::path(path.wstring() + L"." + std::to_wstring(GetCurrentProcessId()) + L"." +
                        std::to_wstring(count) + L".tmp");
    };
    for (int i = 1; i <= taken; ++i)
        std::ofstream(beside(i)) << "d'altri";
    EXPECT_EQ(failure(), 0);
    EXPECT_EQ(readWholeFile(path, 100), "nuovo");
    for (int i = 1; i <= taken; ++i)
        EXPECT_EQ(readWholeFile(beside(i), 100), "d'altri") << i;
}

} // namespace
} // namespace norvel
