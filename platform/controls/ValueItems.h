// The entries of a value list: any number of texts, found by how they begin.
#pragma once

#include "platform/runtime/Api.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::controls {

// All texts stand in one block, so that hundreds of thousands cost little more than their bytes.
class NR_API ValueItems {
  public:
    void Clear();
    void Add(std::string_view text);
    std::size_t Count() const { return ends_.size(); }
    // Until the next Add. The index must be there.
    std::string_view At(std::size_t index) const;
    // The first entry that begins with the prefix, case-blind, looked for from an entry on, then
    // from the first. nullopt: none does, or the prefix is empty.
    std::optional<std::size_t> FindPrefix(std::string_view prefix, std::size_t from) const;

  private:
    std::string texts_;
    std::vector<std::size_t> ends_; // where each text ends
};

} // namespace norvel::controls
