#include "platform/adodb/store/RowGroup.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

constexpr std::uint32_t bitsAWord = 64;

} // namespace

void RowGroup::markNull(int column, std::uint32_t row, bool null) {
    Segment& segment = segments_[static_cast<std::size_t>(column)];
    if (segment.isNull(row) == null) return;
    std::vector<std::uint64_t>& bits = nulls_[column];
    if (bits.empty()) {
        const std::size_t words = (rows_ + bitsAWord - 1) / bitsAWord;
        if (segment.storage == Storage::Null)
            bits.assign(words, ~std::uint64_t{0});
        else if (segment.nulls)
            bits.assign(segment.nulls, segment.nulls + words);
        else
            bits.assign(words, 0);
        if (segment.storage == Storage::Null) segment.storage = Storage::Mixed;
        segment.nulls = bits.data();
    }
    const std::uint64_t bit = std::uint64_t{1} << (row % bitsAWord);
    std::uint64_t& word = bits[row / bitsAWord];
    word = null ? word | bit : word & ~bit;
}

void RowGroup::change(int column, std::uint32_t row, const Variant& value) {
    markNull(column, row, value.isNull());
    auto& exceptions = segments_[static_cast<std::size_t>(column)].exceptions;
    const auto place = std::ranges::lower_bound(exceptions, row, {}, &Exceptional::row);
    const bool there = place != exceptions.end() && place->row == row;
    if (value.isNull()) {
        if (there) exceptions.erase(place);
    } else if (there) {
        place->value = value;
    } else {
        exceptions.insert(place, {row, value});
    }
}

} // namespace norvel::adodb
