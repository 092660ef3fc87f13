#include "platform/grid/layout/LayoutText.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <variant>

namespace norvel::grid {

namespace {

constexpr std::string_view heading = "NorvelRicerca grid layout ";
constexpr int version = 1;
constexpr std::size_t mostColumns = 32767;
constexpr double widest = 1'000'000;   // twips: 17 metres
constexpr double largestFont = 1000;   // points
constexpr int largestNumber = 1 << 24; // of orders, colours, styles

[[noreturn]] void damaged(const std::string& why) {
    throw Errore(321, "Formato di file non valido: " + why);
}

// --- the keys: one place says which member each is ---

template <class T>
using Member = std::variant<bool T::*, int T::*, std::uint32_t T::*, double T::*, std::string T::*>;
template <class T>
struct Key {
    const char* name;
    Member<T> member;
    double most = largestNumber; // of a number; the least is 0
};

const auto& layoutKeys() {
    static const std::array<Key<Layout>, 11> keys{{
        {"FilterBar", &Layout::FilterBar},
        {"AllowSizing", &Layout::AllowSizing},
        {"AllowRowSizing", &Layout::AllowRowSizing},
        {"AllowColMove", &Layout::AllowColMove},
        {"AlternatingRowStyle", &Layout::AlternatingRowStyle},
        {"EvenRowStyle.BackColor", &Layout::EvenRowBackColor},
        {"OddRowStyle.BackColor", &Layout::OddRowBackColor},
        {"FrozenColumns", &Layout::FrozenColumns},
        {"MarqueeStyle", &Layout::MarqueeStyle},
        {"DataView", &Layout::DataView},
        {"RowHeight", &Layout::RowHeight, widest},
    }};
    return keys;
}

const auto& fontKeys() {
    static const std::array<Key<LayoutFont>, 4> keys{{
        {"Font.Name", &LayoutFont::Name},
        {"Font.Size", &LayoutFont::Size, largestFont},
        {"Font.Bold", &LayoutFont::Bold},
        {"Font.Italic", &LayoutFont::Italic},
    }};
    return keys;
}

const auto& columnKeys() {
    static const std::array<Key<LayoutColumn>, 6> keys{{
        {"Caption", &LayoutColumn::Caption},
        {"Width", &LayoutColumn::Width, widest},
        {"Order", &LayoutColumn::Order},
        {"Visible", &LayoutColumn::Visible},
        {"ValueItems.Translate", &LayoutColumn::Translate},
        {"ValueItems.Presentation", &LayoutColumn::Presentation},
    }};
    return keys;
}

constexpr const char* groupKey = "GroupColumns";

// --- writing ---

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        switch (c) {
        case '"':
        case '\\':
            out += '\\';
            out += c;
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += c;
        }
    }
    return out + '"';
}

std::string written(bool value) {
    return value ? "true" : "false";
}
std::string written(const std::string& value) {
    return quoted(value);
}
template <class Number>
std::string written(Number value) {
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

template <class T, class Keys>
void writeKeys(std::string& out, const T& object, const Keys& keys) {
    for (const Key<T>& key : keys)
        std::visit(
            [&](auto member) {
                out.append(key.name).append(" = ").append(written(object.*member)).append("\n");
            },
            key.member);
}

std::vector<const LayoutColumn*> asShown(const Layout& layout) {
    std::vector<const LayoutColumn*> columns;
    columns.reserve(layout.Columns.size());
    for (const LayoutColumn& column : layout.Columns)
        columns.push_back(&column);
    std::ranges::stable_sort(columns, {}, &LayoutColumn::Order);
    return columns;
}

void write(std::string& out, const NamedLayout& named) {
    out.append("\n[layout ").append(quoted(named.Name)).append("]\n");
    writeKeys(out, named.Contents, layoutKeys());
    writeKeys(out, named.Contents.Font, fontKeys());
    out.append(groupKey).append(" =");
    for (std::size_t i = 0; i < named.Contents.GroupColumns.size(); ++i)
        out.append(i ? ", " : " ").append(quoted(named.Contents.GroupColumns[i]));
    out += '\n';
    for (const LayoutColumn* column : asShown(named.Contents)) {
        out.append("\n[column ").append(quoted(column->DataField)).append("]\n");
        writeKeys(out, *column, columnKeys());
    }
}

// --- reading ---

// What is left of a line.
class Rest {
  public:
    explicit Rest(std::string_view text) : text_(text) { skipBlanks(); }

    bool atEnd() const { return text_.empty(); }
    bool take(std::string_view token) {
        if (!text_.starts_with(token)) return false;
        text_.remove_prefix(token.size());
        skipBlanks();
        return true;
    }
    std::string_view word() {
        const std::size_t end = std::min(text_.find_first_of(" \t=\"[],"), text_.size());
        const std::string_view found = text_.substr(0, end);
        text_.remove_prefix(end);
        skipBlanks();
        return found;
    }
    std::string text() {
        if (text_.empty() || text_.front() != '"') damaged("manca un testo fra virgolette");
        std::string found;
        for (std::size_t i = 1; i < text_.size(); ++i) {
            if (text_[i] == '"') {
                text_.remove_prefix(i + 1);
                skipBlanks();
                return toValidUtf8(found);
            }
            if (text_[i] == '\\' && ++i < text_.size())
                found += escaped(text_[i]);
            else if (i < text_.size())
                found += text_[i];
        }
        damaged("un testo non è chiuso");
    }

  private:
    static char escaped(char c) {
        switch (c) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return c;
        }
    }
    void skipBlanks() {
        while (!text_.empty() && (text_.front() == ' ' || text_.front() == '\t'))
            text_.remove_prefix(1);
    }
    std::string_view text_;
};

template <class Number>
Number numberIn(std::string_view word, double most) {
    double value = 0;
    const auto end = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = end.ec == std::errc() && end.ptr == word.data() + word.size();
    if (!whole || !std::isfinite(value) || value < 0 || value > most) damaged("un numero è errato");
    if (!std::is_floating_point_v<Number> && value != std::floor(value))
        damaged("un numero non è intero");
    return static_cast<Number>(value);
}

void read(Rest& rest, bool& value, double) {
    const std::string_view word = rest.word();
    if (word != "true" && word != "false") damaged("un valore non è né true né false");
    value = word == "true";
}
void read(Rest& rest, std::string& value, double) {
    value = rest.text();
}
template <class Number>
void read(Rest& rest, Number& value, double most) {
    value = numberIn<Number>(rest.word(), most);
}

// False where the key is none of these.
template <class T, class Keys>
bool readKey(T& object, const Keys& keys, std::string_view name, Rest& rest) {
    for (const Key<T>& key : keys) {
        if (name != key.name) continue;
        std::visit([&](auto member) { read(rest, object.*member, key.most); }, key.member);
        if (!rest.atEnd()) damaged("resta qualcosa dopo un valore");
        return true;
    }
    return false;
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<NamedLayout> run() {
        readHeading();
        while (!ended_) {
            if (text_.empty()) damaged("il file è interrotto");
            const std::string_view line = nextLine();
            Rest rest(line);
            if (rest.atEnd()) continue;
            if (rest.take("["))
                section(rest);
            else
                key(rest);
        }
        return std::move(layouts_);
    }

  private:
    std::string_view nextLine() {
        const std::size_t end = text_.find('\n');
        if (end == std::string_view::npos) damaged("il file è interrotto");
        std::string_view line = text_.substr(0, end);
        text_.remove_prefix(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }

    void readHeading() {
        std::string_view line = nextLine();
        if (!line.starts_with(heading)) damaged("non è una disposizione di griglia");
        line.remove_prefix(heading.size());
        if (numberIn<int>(line, largestNumber) != version)
            damaged("è di un'altra versione del programma");
    }

    void section(Rest& rest) {
        inLayout_ = inColumn_ = false;
        const std::string_view kind = rest.word();
        if (kind == "end") {
            ended_ = true;
        } else if (kind == "layout") {
            layouts_.push_back({rest.text(), {}});
            fields_.clear();
            inLayout_ = true;
        } else if (kind == "column") {
            column(rest.text());
        } else if (kind.empty()) {
            damaged("una sezione non ha nome");
        }
    }
    // The first of two columns of one field counts.
    void column(const std::string& field) {
        if (layouts_.empty()) damaged("una colonna è fuori da ogni disposizione");
        auto& columns = layouts_.back().Contents.Columns;
        if (columns.size() >= mostColumns) damaged("ha troppe colonne");
        if (!fields_.emplace(foldText(field), true).second) return;
        columns.push_back({});
        columns.back().DataField = field;
        inColumn_ = true;
    }

    void key(Rest& rest) {
        const std::string_view name = rest.word();
        if (name.empty() || !rest.take("=")) damaged("una riga non è del tipo «nome = valore»");
        if (inColumn_) {
            readKey(layouts_.back().Contents.Columns.back(), columnKeys(), name, rest);
        } else if (inLayout_) {
            Layout& layout = layouts_.back().Contents;
            if (name == groupKey)
                groups(layout, rest);
            else if (!readKey(layout, layoutKeys(), name, rest))
                readKey(layout.Font, fontKeys(), name, rest);
        }
    }
    static void groups(Layout& layout, Rest& rest) {
        layout.GroupColumns.clear();
        if (rest.atEnd()) return;
        do
            layout.GroupColumns.push_back(rest.text());
        while (rest.take(","));
        if (!rest.atEnd()) damaged("resta qualcosa dopo un valore");
    }

    std::string_view text_;
    std::vector<NamedLayout> layouts_;
    std::map<std::string, bool> fields_; // of the layout being read, folded
    bool inLayout_ = false;
    bool inColumn_ = false;
    bool ended_ = false;
};

} // namespace

std::string layoutText(const std::vector<NamedLayout>& layouts) {
    std::string out = std::string(heading) + std::to_string(version) + "\n";
    for (const NamedLayout& named : layouts)
        write(out, named);
    return out + "\n[end]\n";
}

std::vector<NamedLayout> readLayoutText(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    return Reader(text).run();
}

} // namespace norvel::grid
