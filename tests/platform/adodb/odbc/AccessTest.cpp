// Access files through mdbtools: what is said of files that are none. Nothing of Debian's writes
// such a file, so none is read here.
#include "tests/platform/adodb/AdodbTest.h"

#include <fstream>

namespace norvel::adodb {
namespace {

std::string failure(const std::string& connection) {
    return descriptionOf([&] { makeConnection()->Open(connection); });
}

TEST(OdbcAccess, AFileThatIsMissingIsNamed) {
    const std::string text =
        failure("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/manca/gest.mdb");
    EXPECT_NE(text.find("«/manca/gest.mdb» non esiste"), std::string::npos) << text;
}

TEST(OdbcAccess, AFolderIsNoDatabase) {
    const TemporaryFolder folder;
    const std::string text =
        failure("Driver={Microsoft Access Driver (*.mdb)};DBQ=" + folder.file(""));
    EXPECT_NE(text.find("cartella"), std::string::npos) << text;
}

TEST(OdbcAccess, AFileOfAnotherKindIsRefused) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("lettera.mdb")) << std::string(20000, 'x');
    EXPECT_NE(errorOf([&] {
                  makeConnection()->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                                         folder.file("lettera.mdb"));
              }),
              0);
}

} // namespace
} // namespace norvel::adodb
