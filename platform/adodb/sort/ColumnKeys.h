// What the values of a column are compared by.
#pragma once

#include "platform/adodb/sort/CellOrder.h"
#include "platform/adodb/sort/RadixSort.h"
#include "platform/adodb/sort/RunSort.h"
#include "platform/adodb/store/ColumnStore.h"
#include "platform/adodb/store/RowList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace norvel::adodb {

// How a column's numbers become keys.
struct NumberForm {
    enum class Kind : std::uint8_t { Whole, Scaled, Real, Exact }; // Exact: of several forms
    Kind kind = Kind::Whole;
    std::uint8_t scale = 0;
    bool operator==(const NumberForm&) const = default;
};

// Places are those of rows in the list that is ranked, which ascends.
using Place = std::uint32_t;

struct ExactPlace {
    NumberKey key;
    Place at = 0;
};

// Rows of the list that lie in one group.
struct Slice {
    const Segment* segment = nullptr;
    RowNumber firstRow = 0; // of the group
    Place begin = 0;
    Place end = 0;
};

// The keys of some slices, kind by kind, in the order of their places.
struct KeyPiece {
    std::span<const Slice> slices;
    std::vector<Place> nulls;
    std::vector<KeyedPlace> numbers;
    std::vector<ExactPlace> exact; // instead of numbers, where they are of several forms
    std::vector<KeyedPlace> dates;
    // Their numbers are places; where texts are shared, the count of the keys before.
    RunKeys texts;
    RunKeys bytes;
    struct Use {
        Place at = 0;
        std::uint32_t key = 0;
    };
    std::vector<Use> uses; // where texts are shared
    std::vector<Place> others;
};

// The keys of a column at the rows, which ascend.
class ColumnKeys {
  public:
    ColumnKeys(const ColumnStore& store, int column, std::span<const RowNumber> rows,
               unsigned threads);

    std::vector<KeyPiece>& pieces() { return pieces_; }
    // Texts of dictionaries have one key each, which their rows use.
    bool sharedTexts() const { return sharedTexts_; }

  private:
    void slice(const ColumnStore& store, int column, std::span<const RowNumber> rows);
    NumberForm numberForm() const;

    std::vector<Slice> slices_;
    std::vector<KeyPiece> pieces_;
    bool sharedTexts_ = false;
};

} // namespace norvel::adodb
