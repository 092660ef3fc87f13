// A process that is killed while it saves leaves the old file or the new one, never a torn one.
#include "platform/grid/layout/LayoutFile.h"
#include "platform/runtime/Errore.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace norvel::grid {
namespace {

namespace fs = std::filesystem;

Layout withColumns(int count) {
    Layout layout;
    for (int i = 0; i < count; ++i)
        layout.Columns.push_back({"c" + std::to_string(i), "Colonna", 1000, i, true, {}});
    return layout;
}

TEST(KilledSave, TwoHundredKillsNeverLeaveATornFile) {
    std::string name = (fs::temp_directory_path() / "nr_kill_XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const std::string path = name + "/vista.grx";
    saveLayout(path, "x", withColumns(200));
    const auto inode = [&] {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
    };
    for (int i = 0; i < 200; ++i) {
        const auto before = inode();
        const pid_t child = ::fork();
        if (child == 0) {
            for (int n = 0;; ++n)
                saveLayout(path, "x", withColumns(n % 2 ? 200 : 400));
        }
        ASSERT_GT(child, 0);
        for (int n = 0; inode() == before && n < 20000; ++n) // its first save has ended
            ::usleep(500);
        ASSERT_NE(inode(), before);
        ::usleep(static_cast<useconds_t>(i * 97 % 10000));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        const std::size_t columns = loadLayout(path, "x").Columns.size();
        ASSERT_TRUE(columns == 200 || columns == 400) << columns;
    }
    fs::remove_all(name);
}

TEST(KilledSave, AFullDiskKeepsTheOldFileAndSaysSo) {
    std::string name = (fs::temp_directory_path() / "nr_full_XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const std::string path = name + "/vista.grx";
    saveLayout(path, "x", withColumns(2));
    // A limit on the size of files stands for the disk's.
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit most{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &most);
        try {
            saveLayout(path, "x", withColumns(300));
        } catch (const Errore&) {
            ::_exit(42);
        }
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 42);
    EXPECT_EQ(loadLayout(path, "x"), withColumns(2));
    EXPECT_EQ(std::distance(fs::directory_iterator(name), {}), 1) << "no half file stays";
    fs::remove_all(name);
}

TEST(KilledSave, TheRightsOfTheFileStay) {
    std::string name = (fs::temp_directory_path() / "nr_mode_XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const std::string path = name + "/vista.grx";
    saveLayout(path, "x", {});
    ASSERT_EQ(::chmod(path.c_str(), 0664), 0);
    saveLayout(path, "x", withColumns(1));
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0664U);
    fs::remove_all(name);
}

} // namespace
} // namespace norvel::grid
