// The host's paths on a real folder tree.
#include "platform/runtime/HostPath.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace norvel {
namespace {

namespace fs = std::filesystem;

class HostPath : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "percorsi.XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        root_ = name;
        before_ = fs::current_path();
        fs::current_path(root_);
    }

    void TearDown() override {
        fs::current_path(before_);
        for (const char* name : {"chiusa", "muta"}) {
            std::error_code error;
            fs::permissions(root_ / name, fs::perms::owner_all, error);
        }
        fs::remove_all(root_);
    }

    void folder(const std::string& name) const { fs::create_directories(root_ / name); }

    void file(const std::string& name) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << "x";
    }

    // The path found, as text, relative to the tree.
    static std::string found(std::string_view path) { return percorsoSistema(path).string(); }

    fs::path root_;
    fs::path before_;
};

TEST_F(HostPath, BackslashesSeparate) {
    EXPECT_EQ(found("a\\b\\c.grx"), "a/b/c.grx");
    EXPECT_EQ(found("a/b\\c.grx"), "a/b/c.grx");
    EXPECT_EQ(found("a\\\\b//c"), "a/b/c");
    EXPECT_EQ(found(""), "");
}

TEST_F(HostPath, ASeparatorAtTheEndStays) {
    folder("parametri");
    EXPECT_EQ(found("PARAMETRI\\"), "parametri/");
    EXPECT_EQ(found("nuova\\"), "nuova/");
    EXPECT_EQ(found("nuova\\\\"), "nuova/");
    EXPECT_EQ(found("\\"), "/");
    EXPECT_EQ(found("C:\\"), "/");
    EXPECT_EQ(found(".\\"), "./");
}

TEST_F(HostPath, CaseIsIgnoredAgainstWhatExists) {
    file("Dati/Parametri/Clienti.GRX");
    EXPECT_EQ(found("dati\\PARAMETRI\\clienti.grx"), "Dati/Parametri/Clienti.GRX");
    EXPECT_EQ(found((root_ / "DATI").string() + "\\parametri\\CLIENTI.grx"),
              (root_ / "Dati/Parametri/Clienti.GRX").string());
}

TEST_F(HostPath, NamesWithAccentsAreMatchedToo) {
    file("Città/Perché.grx");
    file("decomposto/perche\u0301.grx");
    EXPECT_EQ(found("CITTÀ\\PERCHÉ.GRX"), "Città/Perché.grx");
    EXPECT_EQ(found("citta\\perche.grx"), "citta/perche.grx");
    EXPECT_EQ(found("decomposto\\PERCHÉ.grx"), "decomposto/perche\u0301.grx");
}

TEST_F(HostPath, NamesOfOldDisksAreReadAsWindows1252) {
    file("vecchi/citt\xE0.grx");
    EXPECT_EQ(found("vecchi\\CITTÀ.grx"), "vecchi/citt\xE0.grx");
}

TEST_F(HostPath, AnExactNameComesFirstThenByteOrder) {
    file("due/nome");
    file("due/NOME");
    file("due/Nome");
    EXPECT_EQ(found("due\\nome"), "due/nome");
    EXPECT_EQ(found("due\\NOME"), "due/NOME");
    EXPECT_EQ(found("due\\nOmE"), "due/NOME");
}

TEST_F(HostPath, OnlyFoldersHaveSomethingBelow) {
    file("Misto"); // first in byte order, but a file
    file("misto/x");
    EXPECT_EQ(found("MISTO\\x"), "misto/x");
    EXPECT_EQ(found("MISTO\\"), "misto/");
    EXPECT_EQ(found("Misto\\x"), "misto/x");
    EXPECT_EQ(found("MISTO"), "Misto");
}

TEST_F(HostPath, WhatDoesNotExistStaysAsWritten) {
    folder("Dati");
    EXPECT_EQ(found("dati\\Nuova\\File.CSV"), "Dati/Nuova/File.CSV");
    EXPECT_EQ(found("nessuno\\qui"), "nessuno/qui");
    const std::string longName(5000, 'n');
    EXPECT_EQ(found("dati\\" + longName), "Dati/" + longName);
    EXPECT_EQ(found("dati\\no\xFFn"), "Dati/no\xFFn");
}

TEST_F(HostPath, TheResultCanBeCreated) {
    folder("Export");
    std::ofstream(percorsoSistema("EXPORT\\Clienti.csv")) << "riga";
    EXPECT_TRUE(fs::exists(root_ / "Export/Clienti.csv"));
    EXPECT_EQ(found("export\\CLIENTI.CSV"), "Export/Clienti.csv");
}

TEST_F(HostPath, DrivesAreDropped) {
    file("Dati/x");
    const std::string absolute = root_.string();
    std::string host = "C:" + absolute + "\\dati\\X";
    EXPECT_EQ(found(host), absolute + "/Dati/x");
    host[0] = 'z';
    EXPECT_EQ(found(host), absolute + "/Dati/x");
    EXPECT_EQ(found("C:dati\\x"), "Dati/x");
    EXPECT_EQ(found("C:"), ".");
    EXPECT_EQ(found("1:\\x"), "1:/x"); // no drive
    EXPECT_EQ(found("\\\\server-che-manca\\x"), "/server-che-manca/x");
}

TEST_F(HostPath, DotsAreTheSystemsToResolve) {
    folder("vera/dentro");
    file("vera/Accanto");
    fs::create_directory_symlink("vera/dentro", root_ / "Scorciatoia");
    EXPECT_EQ(found(".\\VERA\\.\\dentro"), "./vera/./dentro");
    EXPECT_EQ(found("vera\\..\\VERA"), "vera/../vera");
    // Behind a link, ".." is the parent of where the link leads.
    EXPECT_EQ(found("scorciatoia\\..\\ACCANTO"), "Scorciatoia/../Accanto");
    EXPECT_TRUE(fs::exists(percorsoSistema("scorciatoia\\..\\ACCANTO")));
    EXPECT_EQ(found(".."), "..");
}

TEST_F(HostPath, LinksAreFollowedAndDanglingOnesAreNames) {
    folder("vera");
    file("vera/x");
    fs::create_directory_symlink("vera", root_ / "Legame");
    fs::create_symlink("manca", root_ / "Vuoto");
    EXPECT_EQ(found("LEGAME\\X"), "Legame/x");
    EXPECT_EQ(found("VUOTO"), "Vuoto");
    file("VUOTO");
    EXPECT_EQ(found("Vuoto"), "Vuoto");
}

// Root looks into every folder, so the test looks as somebody else.
class AsSomebodyElse {
  public:
    AsSomebodyElse() {
        if (wasRoot_) changed_ = seteuid(65534) == 0;
    }
    ~AsSomebodyElse() {
        if (changed_ && seteuid(0) != 0) ADD_FAILURE() << "still somebody else";
    }
    AsSomebodyElse(const AsSomebodyElse&) = delete;
    AsSomebodyElse& operator=(const AsSomebodyElse&) = delete;

  private:
    bool wasRoot_ = geteuid() == 0;
    bool changed_ = false;
};

TEST_F(HostPath, WhatCannotBeLookedAtIsTakenAsWritten) {
    file("chiusa/Dentro/x");
    file("muta/Dentro");
    fs::permissions(root_, fs::perms{0755});
    fs::permissions(root_ / "chiusa", fs::perms::none);
    fs::permissions(root_ / "muta", fs::perms{0111});
    const AsSomebodyElse other;
    ASSERT_NE(geteuid(), 0U);
    EXPECT_EQ(found("CHIUSA\\dentro\\X"), "chiusa/dentro/X");
    EXPECT_EQ(found("muta\\Dentro"), "muta/Dentro"); // may be entered, not listed
    EXPECT_EQ(found("muta\\dentro"), "muta/dentro");
}

TEST_F(HostPath, AFileIsNoFolderToSearch) {
    file("archivio");
    EXPECT_EQ(found("ARCHIVIO\\x"), "ARCHIVIO/x");
}

} // namespace
} // namespace norvel
