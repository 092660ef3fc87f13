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

// What a key's value is, found in the layout or in the column.
using Value = std::variant<bool*, int*, std::uint32_t*, double*, std::string*>;
template <class T>
struct Key {
    const char* name;
    Value (*value)(T&);
    double most = largestNumber; // of a number; the least is 0
};

constexpr Key<Layout> layoutKeys[] = {
    {"FilterBar", [](Layout& l) -> Value { return &l.Split.FilterBar; }},
    {"AllowSizing", [](Layout& l) -> Value { return &l.Split.AllowSizing; }},
    {"AllowRowSizing", [](Layout& l) -> Value { return &l.Split.AllowRowSizing; }},
    {"AllowColMove", [](Layout& l) -> Value { return &l.Split.AllowColMove; }},
    {"AlternatingRowStyle", [](Layout& l) -> Value { return &l.Split.AlternatingRowStyle; }},
    {"EvenRowStyle.BackColor", [](Layout& l) -> Value { return &l.Split.EvenRowStyle.BackColor; },
     0xFFFFFFFF},
    {"OddRowStyle.BackColor", [](Layout& l) -> Value { return &l.Split.OddRowStyle.BackColor; },
     0xFFFFFFFF},
    {"FrozenColumns", [](Layout& l) -> Value { return &l.Split.FrozenColumns; }},
    {"MarqueeStyle", [](Layout& l) -> Value { return &l.Style.MarqueeStyle; }},
    {"DataView", [](Layout& l) -> Value { return &l.Style.DataView; }},
    {"RowHeight", [](Layout& l) -> Value { return &l.Style.RowHeight; }, widest},
    {"Font.Name", [](Layout& l) -> Value { return &l.Style.Font.Name; }},
    {"Font.Size", [](Layout& l) -> Value { return &l.Style.Font.Size; }, largestFont},
    {"Font.Bold", [](Layout& l) -> Value { return &l.Style.Font.Bold; }},
    {"Font.Italic", [](Layout& l) -> Value { return &l.Style.Font.Italic; }},
};

constexpr Key<LayoutColumn> columnKeys[] = {
    {"Caption", [](LayoutColumn& c) -> Value { return &c.Caption; }},
    {"Width", [](LayoutColumn& c) -> Value { return &c.Width; }, widest},
    {"Order", [](LayoutColumn& c) -> Value { return &c.Order; }},
    {"Visible", [](LayoutColumn& c) -> Value { return &c.Visible; }},
    {"ValueItems.Translate", [](LayoutColumn& c) -> Value { return &c.ValueItems.Translate; }},
    {"ValueItems.Presentation",
     [](LayoutColumn& c) -> Value { return &c.ValueItems.Presentation; }},
};

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

std::string written(bool value, double) {
    return value ? "true" : "false";
}
std::string written(const std::string& value, double) {
    return quoted(value);
}
// What would not be read again is brought to the nearest number that is: one column must not make
// a file unreadable.
template <class Number>
std::string written(Number value, double most) {
    if (!(static_cast<double>(value) >= 0)) value = 0;
    if (static_cast<double>(value) > most) value = static_cast<Number>(most);
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

template <class T, std::size_t count>
void writeKeys(std::string& out, T object, const Key<T> (&keys)[count]) {
    for (const Key<T>& key : keys)
        std::visit(
            [&](const auto* value) {
                out.append(key.name).append(" = ").append(written(*value, key.most)).append("\n");
            },
            key.value(object));
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
    writeKeys(out, named.Contents, layoutKeys);
    out.append(groupKey).append(" =");
    const auto& groups = named.Contents.Style.GroupColumns;
    for (std::size_t i = 0; i < groups.size(); ++i)
        out.append(i ? ", " : " ").append(quoted(groups[i]));
    out += '\n';
    for (const LayoutColumn* column : asShown(named.Contents)) {
        out.append("\n[column ").append(quoted(column->DataField)).append("]\n");
        writeKeys(out, *column, columnKeys);
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
template <class T, std::size_t count>
bool readKey(T& object, const Key<T> (&keys)[count], std::string_view name, Rest& rest) {
    for (const Key<T>& key : keys) {
        if (name != key.name) continue;
        std::visit([&](auto* value) { read(rest, *value, key.most); }, key.value(object));
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
        const int written = numberIn<int>(line, largestNumber);
        if (written > version)
            throw Errore(laterLayoutVersion, "Il file è di una versione successiva del programma");
        if (written != version) damaged("la versione è errata");
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
            readKey(layouts_.back().Contents.Columns.back(), columnKeys, name, rest);
        } else if (inLayout_) {
            Layout& layout = layouts_.back().Contents;
            if (name == groupKey)
                groups(layout.Style.GroupColumns, rest);
            else
                readKey(layout, layoutKeys, name, rest);
        }
    }
    static void groups(std::vector<std::string>& fields, Rest& rest) {
        fields.clear();
        if (rest.atEnd()) return;
        do {
            if (fields.size() >= mostColumns) damaged("raggruppa per troppe colonne");
            fields.push_back(rest.text());
        } while (rest.take(","));
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
