#include "platform/adodb/access/ExportReader.h"

namespace norvel::adodb {

void ExportReader::read(std::string_view piece) {
    while (!piece.empty() && sound_) {
        if (state_ == State::Quoted) {
            const std::size_t quote = piece.find('"');
            row_[at_].text.append(piece.substr(0, quote));
            if (quote == std::string_view::npos) return;
            piece.remove_prefix(quote + 1);
            state_ = State::QuoteInQuoted;
            continue;
        }
        plain(piece.front());
        piece.remove_prefix(1);
    }
}

void ExportReader::plain(char c) {
    if (c == valueEnd) {
        endValue();
    } else if (c == rowEnd) {
        endRow();
    } else if (c == '"') {
        if (state_ == State::QuoteInQuoted) row_[at_].text += c;
        row_[at_].null = false;
        state_ = State::Quoted;
    } else {
        row_[at_].text += c;
        row_[at_].null = false;
        state_ = State::Plain;
    }
}

void ExportReader::endValue() {
    state_ = State::Start;
    sound_ = ++at_ < row_.size();
}

void ExportReader::endRow() {
    sound_ = at_ + 1 == row_.size();
    if (!sound_) return;
    take_(row_);
    ++rows_;
    at_ = 0;
    state_ = State::Start;
    for (AccessValue& value : row_) {
        value.text.clear();
        value.null = true;
    }
}

} // namespace norvel::adodb
