// Which groups are open, told by the values of their columns, so that they stay open when the rows
// are grouped anew.
#pragma once

#include "platform/runtime/Variant.h"

#include <set>
#include <string>
#include <vector>

namespace norvel::grid {

// The values of a group and of those around it, the outermost first.
using GroupPath = std::vector<Variant>;

// All groups are closed, or all are open, but for some. A group that is gone for a while (a filter)
// is as it was when it comes back.
class NR_API Expansion {
  public:
    // The fields that the rows are grouped by. What is known of the outermost ones stays as far as
    // they are the same (case-blind); where the outermost changes all are closed.
    void SetFields(const std::vector<std::string>& fields);
    void SetAll(bool open);
    bool All() const { return all_; }
    void Set(const GroupPath& path, bool open);
    bool IsOpen(const GroupPath& path) const;

    // By the order of the groups: values as a sort has them, equal texts in any case.
    struct Less {
        bool operator()(const GroupPath& a, const GroupPath& b) const;
    };
    using Paths = std::set<GroupPath, Less>;
    // Those that are not as All() says.
    const Paths& Others() const { return others_; }

  private:
    std::vector<std::string> fields_;
    bool all_ = false;
    Paths others_;
};

} // namespace norvel::grid
