#include "platform/runtime/HostPath.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace norvel {
namespace {

namespace fs = std::filesystem;

// A folder with an accented name and a file in it, made by the test and taken away by it.
class HostPathOnWindows : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(folder_);
        std::ofstream(folder_ / L"Qualità.grx") << "x";
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::string hostFolder() const {
        const std::u8string text = folder_.u8string();
        return {text.begin(), text.end()};
    }

  private:
    fs::path folder_ = fs::temp_directory_path() / L"Percorsi àèìòù";
};

TEST_F(HostPathOnWindows, OpensAnyCaseAndEitherSeparatorByTheSystemsOwnRules) {
    for (const char* name : {"\\Qualità.grx", "\\QUALITÀ.GRX", "/qualità.grx"}) {
        std::ifstream file(percorsoSistema(hostFolder() + name));
        EXPECT_EQ(file.get(), 'x') << name;
    }
}

TEST_F(HostPathOnWindows, TakesPathsAsWritten) {
    EXPECT_EQ(percorsoSistema("C:\\dati\\parametri\\Clienti.grx").wstring(),
              L"C:\\dati\\parametri\\Clienti.grx");
    EXPECT_EQ(percorsoSistema("\\\\server\\dati\\").wstring(), L"\\\\server\\dati\\");
    EXPECT_EQ(percorsoSistema("export\\è.csv").wstring(), L"export\\è.csv");
    EXPECT_TRUE(percorsoSistema("").empty());
}

TEST_F(HostPathOnWindows, ANameThatIsNotThereCanBeCreated) {
    const fs::path path = percorsoSistema(hostFolder() + "\\nuovo perché.csv");
    EXPECT_FALSE(fs::exists(path));
    std::ofstream(path) << "y";
    EXPECT_TRUE(fs::exists(path));
}

} // namespace
} // namespace norvel
