// What is said of files that are none of Access, or no longer whole: never fewer rows in silence,
// never the end of the process.
#include "tests/platform/adodb/access/AccessTest.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace norvel::adodb {
namespace {

std::string failure(const std::string& connection) {
    return descriptionOf([&] { makeConnection()->Open(connection); });
}

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

TEST(AccessRefused, AFileThatIsMissingIsNamed) {
    const std::string text = failure(jetProvider("/manca/gest.mdb"));
    EXPECT_NE(text.find("«/manca/gest.mdb» non esiste"), std::string::npos) << text;
}

TEST(AccessRefused, AFolderIsNoDatabase) {
    const TemporaryFolder folder;
    const std::string text = failure(accessDriver(folder.file("")));
    EXPECT_NE(text.find("cartella"), std::string::npos) << text;
}

TEST(AccessRefused, AFileOfAnotherKind) {
    const TemporaryFolder folder;
    write(folder.file("lettera.mdb"), std::string(20000, 'x'));
    write(folder.file("vuoto.mdb"), "");
    for (const char* name : {"lettera.mdb", "vuoto.mdb"}) {
        const std::string text = failure(jetProvider(folder.file(name)));
        EXPECT_NE(text.find(name), std::string::npos) << text;
    }
}

// A file cut anywhere is refused, when it is opened or when its rows are read, unless every row is
// still there.
TEST(AccessRefused, AFileCutShort) {
    const TemporaryFolder folder;
    writeCustomers(folder.file("intero.mdb"), 500);
    const std::string path = folder.file("tronco.mdb");
    const auto cut = [&](const std::string& whole, std::size_t length, const std::string& table,
                         RowCount rows) {
        write(path, whole.substr(0, length));
        const std::string text = descriptionOf([&] {
            EXPECT_EQ(openOn(jetProvider(path), "SELECT * FROM " + table)->RecordCount(), rows);
        });
        const bool named = text.find("tronco.mdb") != std::string::npos;
        EXPECT_TRUE(named || length % 2048 < 14) << length << ": " << text;
    };
    const std::string ours = bytesOf(folder.file("intero.mdb"));
    const std::string access = bytesOf(fileOfAccess2000());
    for (std::size_t length = 1; length < ours.size(); length += 1365)
        cut(ours, length, "clienti", 504);
    for (std::size_t length = 4096; length < access.size(); length += 4096)
        cut(access, length, "Monitor_Authenticate", 1);
}

// A page that says it holds no row is no damage to mdbtools: the table's own count tells.
TEST(AccessRefused, RowsThatAreMissingByTheTablesCount) {
    const TemporaryFolder folder;
    const std::string path = folder.file("gest.mdb");
    writeCustomers(path, 500);
    std::string bytes = bytesOf(path);
    std::size_t page = 0;
    while (bytes[page] != 1 || bytes[page + 12] < 20)
        page += 4096;
    bytes[page + 12] = 0;
    write(path, bytes);
    const std::string text =
        descriptionOf([&] { openOn(jetProvider(path), "SELECT * FROM clienti"); });
    EXPECT_NE(text.find("«clienti» mancano righe"), std::string::npos) << text;
}

// A file with wrong bytes gives rows or an error; the process goes on.
TEST(AccessRefused, DamagedFilesDoNotBringTheProcessDown) {
    const TemporaryFolder folder;
    writeCustomers(folder.file("intero.mdb"), 200);
    const std::string whole = bytesOf(folder.file("intero.mdb"));
    std::minstd_rand random(20110315);
    int refused = 0;
    for (int i = 0; i < 60; ++i) {
        std::string bytes = whole;
        for (int k = 0; k < 40; ++k)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        write(folder.file("guasto.mdb"), bytes);
        refused += errorOf([&] {
                       openOn(jetProvider(folder.file("guasto.mdb")), "SELECT * FROM clienti");
                   }) != 0
                       ? 1
                       : 0;
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(rowsOf(jetProvider(folder.file("intero.mdb")), "SELECT count(*) FROM clienti"),
              "204|");
}

} // namespace
} // namespace norvel::adodb
