// The values in what mdb-export writes.
#pragma once

#include "platform/adodb/access/AccessFile.h"

#include <functional>
#include <string_view>

namespace norvel::adodb {

// Signs that no text holds by accident between values and rows; texts stand in double quotes,
// doubled inside.
inline constexpr char valueEnd = '\x1F';
inline constexpr char rowEnd = '\x1E';

// Takes the output piece by piece, wherever it is cut.
class ExportReader {
  public:
    ExportReader(std::size_t columns, const std::function<void(const AccessRow&)>& take)
        : row_(columns), take_(take) {}
    void read(std::string_view piece);
    // False where a row had other than that many values, or the last one is not whole.
    bool whole() const { return sound_ && at_ == 0 && state_ == State::Start; }
    std::int64_t rows() const { return rows_; }

  private:
    enum class State { Start, Plain, Quoted, QuoteInQuoted };

    void plain(char c);
    void endValue();
    void endRow();

    AccessRow row_;
    const std::function<void(const AccessRow&)>& take_;
    std::size_t at_ = 0; // the value being read
    State state_ = State::Start;
    bool sound_ = true;
    std::int64_t rows_ = 0;
};

} // namespace norvel::adodb
