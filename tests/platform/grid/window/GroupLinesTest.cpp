// The lines of groups in the real grid.
#include "tests/platform/grid/window/GroupFixture.h"

namespace norvel::tests {
namespace {

using namespace adodb;
using Texts = std::vector<std::string>;

TEST_F(GroupTest, ShowsClosedGroupsWithTheirCountsInAscendingOrder) {
    openGroups({"citta"});
    screenshot(*frame_, "groups_closed");
    EXPECT_EQ(lines(), (Texts{"citta: (nessun valore) (10)", "citta: (vuoto) (10)",
                              "citta: Milano (10)", "citta: roma (20)", "citta: Torino (10)"}));
    grid_->SetGroupOpen(3, true);
    robot_.pump();
    screenshot(*frame_, "groups_open");
}

} // namespace
} // namespace norvel::tests
