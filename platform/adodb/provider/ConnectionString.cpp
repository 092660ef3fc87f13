#include "platform/adodb/provider/ConnectionString.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

// Walks the text; every read leaves position behind what it read.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}
    bool atEnd() const { return position_ >= text_.size(); }

    std::string keyword() {
        const std::size_t end = std::min(text_.find_first_of("=;", position_), text_.size());
        std::string word = trimText(text_.substr(position_, end - position_));
        position_ = end;
        return word;
    }
    bool skip(char c) {
        if (atEnd() || text_[position_] != c) return false;
        ++position_;
        return true;
    }
    std::string value() {
        while (skip(' ')) {
        }
        const char first = atEnd() ? '\0' : text_[position_];
        if (first == '"' || first == '\'') return quoted(first);
        if (first == '{') return quoted('}');
        const std::size_t end = std::min(text_.find(';', position_), text_.size());
        std::string word = trimText(text_.substr(position_, end - position_));
        position_ = end;
        return word;
    }
    void skipToPair() {
        position_ = std::min(text_.find(';', position_), text_.size());
        skip(';');
    }

  private:
    std::string quoted(char close) {
        std::string value;
        for (++position_; !atEnd(); ++position_) {
            if (text_[position_] == close) {
                ++position_;
                if (atEnd() || text_[position_] != close) return value;
            }
            value += text_[position_];
        }
        return value;
    }
    std::string_view text_;
    std::size_t position_ = 0;
};

} // namespace

ConnectionString::ConnectionString(std::string_view text) : text_(text) {
    Reader reader(text);
    while (!reader.atEnd()) {
        const std::string keyword = reader.keyword();
        if (reader.skip('=') && !keyword.empty()) values_[keyword] = reader.value();
        reader.skipToPair();
    }
}

std::optional<std::string> ConnectionString::value(std::string_view keyword) const {
    const auto found = values_.find(keyword);
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return found->second;
}

std::map<std::string, std::string, LessText> ConnectionString::pairs() const {
    auto pairs = values_;
    std::erase_if(pairs, [](const auto& pair) { return pair.second.empty(); });
    return pairs;
}

} // namespace norvel::adodb
