// The texts of a workbook: cells refer to them by number.
#pragma once

#include "platform/spreadsheet/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norvel::spreadsheet {

// Numbers the texts of one sheet. A text that came not long ago gets its old number again; the
// memory for that is bounded, whatever the sheet holds. The same texts in the same order always
// get the same numbers, so that a sheet's cells can be written after the texts.
class TextNumbers {
  public:
    TextNumbers();
    struct Numbered {
        std::uint32_t number = 0;
        bool isNew = false;
    };
    Numbered number(std::string_view text);
    std::uint32_t count() const { return count_; }

  private:
    struct Slot {
        std::uint32_t number = 0;
        bool used = false;
        std::string text;
    };
    std::vector<Slot> slots_;
    std::uint32_t count_ = 0;
};

// The texts of one sheet as records: the first sheet's begin the table of texts, the others'
// continue it.
class TextRecords {
  public:
    static constexpr std::size_t longestText = 32767; // UTF-16 units that a cell holds

    explicit TextRecords(bool beginsTable);
    // text: UTF-8, or bytes that are read as Windows-1252. What is longer than a cell holds is cut
    // at a character's end, and counted.
    void add(std::string_view text);
    void finish();
    const Bytes& bytes() const { return out_; }
    std::int64_t cut() const { return cut_; }
    // Where in bytes() the table's totals stand, when it begins here: all uses, then the texts.
    static constexpr std::size_t totalsOffset = 4;

  private:
    void beginRecord(bool first);
    void endRecord();
    std::size_t room() const;
    void addBytes(std::string_view ascii);
    void addWide(std::string_view utf8);
    template <class Unit>
    void addUnits(const Unit* units, std::size_t count, unsigned flag);

    Bytes out_;
    std::size_t recordBegin_ = 0;
    bool open_ = false;
    std::vector<char16_t> wide_;
    std::vector<std::uint8_t> narrow_;
    std::int64_t cut_ = 0;
};

} // namespace norvel::spreadsheet
