#include "platform/grid/groups/Expansion.h"

#include "platform/adodb/sort/CellOrder.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cstddef>

namespace norvel::grid {

void Expansion::SetFields(const std::vector<std::string>& fields) {
    const auto same = std::ranges::mismatch(fields_, fields, equalsText).in1 - fields_.begin();
    if (same == 0) SetAll(false);
    std::erase_if(others_, [&](const GroupPath& path) {
        return static_cast<std::ptrdiff_t>(path.size()) > same;
    });
    fields_ = fields;
}

void Expansion::SetAll(bool open) {
    all_ = open;
    others_.clear();
}

void Expansion::Set(const GroupPath& path, bool open) {
    if (open == all_)
        others_.erase(path);
    else
        others_.insert(path);
}

bool Expansion::IsOpen(const GroupPath& path) const {
    return others_.contains(path) != all_;
}

bool Expansion::Less::operator()(const GroupPath& a, const GroupPath& b) const {
    return std::ranges::lexicographical_compare(
        a, b, [](const Variant& x, const Variant& y) { return adodb::compareCells(x, y) < 0; });
}

} // namespace norvel::grid
