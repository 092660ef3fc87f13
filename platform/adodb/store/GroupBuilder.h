// Gathers rows and publishes them group by group.
#pragma once

#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/SegmentBuilder.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace norvel::adodb {

// Private to the thread that fills it; what it publishes is seen by all.
class GroupBuilder {
  public:
    explicit GroupBuilder(std::shared_ptr<ColumnStore> store);

    // Takes the rows of the batch that were not taken yet; publishes groups as they fill up.
    // Returns how many groups it published.
    int take(Batch& batch);
    // One row of a recordset without a source; publishes it at once.
    void append(const std::vector<Variant>& values);
    // Publishes what is gathered; false where that is nothing.
    bool publish();
    std::uint32_t gathered() const { return gathered_; }

  private:
    // A group is full at so many rows, at so many cells, and at so many bytes.
    static constexpr std::uint32_t fullRows = 65536;
    static constexpr std::uint32_t fullCells = 1U << 20U;
    static constexpr std::size_t fullBytes = std::size_t{64} * 1024 * 1024;

    std::size_t weight() const;

    std::shared_ptr<ColumnStore> store_;
    std::vector<SegmentBuilder> columns_;
    std::uint32_t rowLimit_;
    std::uint32_t gathered_ = 0;
};

} // namespace norvel::adodb
