#include "platform/runtime/Errore.h"
#include "platform/runtime/WholeFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace norvel {
namespace {

namespace fs = std::filesystem;

class NewFilePosixTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "nr_file_XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        mask = ::umask(022);
    }
    void TearDown() override {
        ::umask(mask);
        fs::remove_all(folder);
    }
    mode_t rights(const char* name) const {
        struct stat status {};
        EXPECT_EQ(::stat((folder / name).c_str(), &status), 0);
        return status.st_mode & 07777U;
    }
    fs::path folder;
    mode_t mask = 0;
};

// From now on the system refuses this call to the process, as a file system may that cannot do it.
bool refuse(long call) {
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog filter{4, program};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

// What the work says, in a process of its own: 0 for done, the number of its Errore.
template <class Work>
[[noreturn]] void inProcess(Work work) {
    try {
        work();
        std::_Exit(0);
    } catch (const Errore& error) {
        std::_Exit(static_cast<int>(error.numero()));
    }
}

TEST_F(NewFilePosixTest, ALinkStaysAndWhatItNamesIsReplaced) {
    fs::create_directory(folder / "altrove");
    writeWholeFile(folder / "altrove" / "vero.csv", "vecchio");
    fs::create_symlink(folder / "altrove" / "vero.csv", folder / "elenco.csv");
    writeWholeFile(folder / "elenco.csv", "nuovo");
    EXPECT_TRUE(fs::is_symlink(folder / "elenco.csv"));
    EXPECT_EQ(readWholeFile(folder / "altrove" / "vero.csv", 100), "nuovo");
}

TEST_F(NewFilePosixTest, AFileThatIsReplacedKeepsItsRightsAndANewOneHasThoseOfNewFiles) {
    ::umask(027);
    writeWholeFile(folder / "nuovo.csv", "x");
    EXPECT_EQ(rights("nuovo.csv"), 0640U);
    for (const mode_t kept : {0600U, 0666U, 0755U}) {
        ASSERT_EQ(::chmod((folder / "nuovo.csv").c_str(), kept), 0);
        writeWholeFile(folder / "nuovo.csv", "y");
        EXPECT_EQ(rights("nuovo.csv"), kept);
    }
}

// The rest of a host's threads make files meanwhile.
TEST_F(NewFilePosixTest, TheProcesssMaskIsNotTouched) {
    EXPECT_EXIT(inProcess([&] {
                    if (!refuse(SYS_umask)) std::_Exit(99);
                    writeWholeFile(folder / "nuovo.csv", "x");
                }),
                ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(rights("nuovo.csv"), 0644U);
}

TEST_F(NewFilePosixTest, AFileSystemThatTakesNoRightsTakesTheFile) {
    writeWholeFile(folder / "elenco.csv", "vecchio");
    ASSERT_EQ(::chmod((folder / "elenco.csv").c_str(), 0666), 0);
    EXPECT_EXIT(inProcess([&] {
                    if (!refuse(SYS_fchmod)) std::_Exit(99);
                    writeWholeFile(folder / "elenco.csv", "nuovo");
                }),
                ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(readWholeFile(folder / "elenco.csv", 100), "nuovo");
}

TEST_F(NewFilePosixTest, AFileThatIsProtectedIsRefusedAndStays) {
    constexpr uid_t nobody = 65534;
    writeWholeFile(folder / "elenco.csv", "vecchio");
    ASSERT_EQ(::chmod(folder.c_str(), 0777), 0);
    ASSERT_EQ(::chmod((folder / "elenco.csv").c_str(), 0444), 0);
    EXPECT_EXIT(inProcess([&] {
                    if (::geteuid() == 0 && ::setuid(nobody) != 0) std::_Exit(99);
                    writeWholeFile(folder / "elenco.csv", "nuovo");
                }),
                ::testing::ExitedWithCode(70), "");
    EXPECT_EQ(readWholeFile(folder / "elenco.csv", 100), "vecchio");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
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
