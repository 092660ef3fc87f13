#include "platform/adodb/Errors.h"
#include "platform/adodb/sort/SortOrder.h"
#include "platform/runtime/Text.h"

#include <algorithm>

namespace norvel::adodb {

namespace {

[[noreturn]] void refuse(std::string_view why) {
    throw adoError(adErrInvalidArgument,
                   std::string("L'ordinamento non si può leggere: ").append(why));
}

// What a name without brackets is made of, as in a filter.
bool isNameByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           c == '$' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

bool isWord(std::string_view found, std::string_view word) {
    return found.size() == word.size() && equalsText(found, word);
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    bool atEnd() {
        while (at_ < text_.size() && std::string_view(" \t\r\n").find(text_[at_]) != none)
            ++at_;
        return at_ == text_.size();
    }
    bool skip(char c) {
        if (atEnd() || text_[at_] != c) return false;
        ++at_;
        return true;
    }
    SortKey key() {
        SortKey key;
        key.name = name();
        if (atEnd() || text_[at_] == ',') return key;
        const std::string_view direction = word();
        key.ascending = isWord(direction, "ASC");
        if (!key.ascending && !isWord(direction, "DESC"))
            refuse("dopo il nome di un campo stanno solo ASC, DESC o una virgola");
        return key;
    }

  private:
    static constexpr std::size_t none = std::string_view::npos;

    std::string_view word() {
        const std::size_t begin = at_;
        while (at_ < text_.size() && isNameByte(text_[at_]))
            ++at_;
        return text_.substr(begin, at_ - begin);
    }
    std::string name() {
        if (skip('[')) return bracketed();
        const std::string_view found = atEnd() ? std::string_view() : word();
        if (found.empty()) refuse("manca il nome di un campo");
        if (isWord(found, "ASC") || isWord(found, "DESC"))
            refuse("ASC o DESC sta al posto di un campo");
        return std::string(found);
    }
    // Up to the bracket that closes; doubled it stands for itself.
    std::string bracketed() {
        std::string found;
        for (; at_ < text_.size(); ++at_) {
            if (text_[at_] == ']') {
                ++at_;
                if (at_ == text_.size() || text_[at_] != ']') {
                    if (found.empty()) refuse("manca il nome di un campo");
                    return found;
                }
            }
            found += text_[at_];
        }
        refuse("manca la parentesi quadra che chiude il nome");
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

std::vector<SortKey> parseSort(std::string_view text) {
    Reader reader(text);
    std::vector<SortKey> keys;
    if (reader.atEnd()) return keys;
    do
        keys.push_back(reader.key());
    while (reader.skip(','));
    if (!reader.atEnd()) refuse("tra due campi manca la virgola");
    return keys;
}

} // namespace norvel::adodb
