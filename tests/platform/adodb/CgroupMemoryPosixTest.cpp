// The memory that a container leaves, read from folders like the kernel's.
#include "platform/adodb/fetch/CgroupMemoryPosix.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace norvel::adodb {
namespace {

namespace fs = std::filesystem;

class CgroupMemory : public testing::Test {
  protected:
    void SetUp() override { fs::create_directories(mounts_); }
    void TearDown() override { fs::remove_all(mounts_); }
    void limit(const fs::path& file, const std::string& text) const {
        fs::create_directories((mounts_ / file).parent_path());
        std::ofstream(mounts_ / file) << text << "\n";
    }
    std::optional<std::size_t> of(const std::string& membership) const {
        return cgroupMemory(membership, mounts_);
    }
    const fs::path mounts_ =
        fs::temp_directory_path() / ("cgroup-" + std::to_string(std::random_device{}()));
};

TEST_F(CgroupMemory, WithoutGroupsOrLimitsThereIsNone) {
    EXPECT_EQ(of(""), std::nullopt);
    EXPECT_EQ(of("0::/\n"), std::nullopt);
    limit("memory.max", "max");
    limit("user.slice/memory.max", "max");
    EXPECT_EQ(of("0::/user.slice\n"), std::nullopt);
    EXPECT_EQ(of("not a line of groups\n"), std::nullopt);
}

TEST_F(CgroupMemory, AParentsLimitHoldsForItsGroups) {
    limit("a/memory.max", "1000");
    limit("a/b/memory.max", "max");
    limit("c/memory.max", "5");
    EXPECT_EQ(of("0::/a/b\n"), 1000U);
    limit("a/b/memory.max", "800");
    EXPECT_EQ(of("0::/a/b\n"), 800U);
}

TEST_F(CgroupMemory, AContainerThatSeesItsGroupAsTheRootFindsTheLimitThere) {
    limit("memory.max", "3000");
    EXPECT_EQ(of("0::/docker/0123\n"), 3000U);
}

TEST_F(CgroupMemory, TheFirstVersionsMemoryControllerCountsAlone) {
    limit("memory/box/memory.limit_in_bytes", "2000");
    limit("cpu/box/memory.limit_in_bytes", "1");
    EXPECT_EQ(of("5:cpu,cpuacct:/box\n4:hugetlb,memory:/box\n0::/\n"), 2000U);
    EXPECT_EQ(of("5:cpu,cpuacct:/box\n"), std::nullopt);
}

} // namespace
} // namespace norvel::adodb
