// Records of the binary workbook format: a number, a length, that many bytes.
#pragma once

#include "platform/spreadsheet/Bytes.h"

#include <cstdint>
#include <string_view>

namespace norvel::spreadsheet {

// Numbers of the records that are written here. [MS-XLS] 2.3.
enum class RecordType : std::uint16_t {
    Bof = 0x0809,
    Eof = 0x000A,
    CodePage = 0x0042,
    Window1 = 0x003D,
    Date1904 = 0x0022,
    Font = 0x0031,
    Xf = 0x00E0,
    Style = 0x0293,
    BoundSheet = 0x0085,
    Sst = 0x00FC,
    Continue = 0x003C,
    ColInfo = 0x007D,
    Dimensions = 0x0200,
    Number = 0x0203,
    BoolErr = 0x0205,
    Rk = 0x027E,
    LabelSst = 0x00FD,
    Window2 = 0x023E,
};

inline constexpr std::size_t recordHeaderBytes = 4;
inline constexpr std::size_t longestRecord = 8224; // bytes behind the header

// A record that is being written; its length is filled in at the end.
class Record {
  public:
    Record(Bytes& out, RecordType type) : out_(out) {
        out.put16(static_cast<unsigned>(type));
        out.put16(0);
        begin_ = out.size();
    }
    ~Record() { out_.set(begin_ - 2, static_cast<std::uint16_t>(out_.size() - begin_)); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    // ASCII, its length before it in one byte.
    void shortText(std::string_view text) {
        out_.put8(static_cast<unsigned>(text.size()));
        out_.put8(0); // a byte a character
        for (const char c : text)
            out_.put8(static_cast<unsigned char>(c));
    }

  private:
    Bytes& out_;
    std::size_t begin_ = 0;
};

} // namespace norvel::spreadsheet
