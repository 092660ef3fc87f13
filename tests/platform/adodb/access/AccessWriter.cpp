#include "tests/platform/adodb/access/AccessWriter.h"

#include <array>
#include <bit>
#include <cstring>
#include <fstream>
#include <numeric>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::size_t pageSize = 4096;
constexpr std::size_t catalogueDefinition = 2; // always that page
constexpr std::size_t longestInline = 1000;    // bytes of a memo within its row
constexpr std::size_t longestPart = 4072;      // of one in a page of its own

std::string number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8U)
        text += static_cast<char>(value & 0xFFU);
    return text;
}

void put(std::string& page, std::size_t at, const std::string& bytes) {
    page.replace(at, bytes.size(), bytes);
}

// UTF-8 of the Basic Multilingual Plane, in two bytes a character.
std::string ucs2(const std::string& text) {
    std::string wide;
    for (std::size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i++]);
        const int more = first < 0x80 ? 0 : first < 0xE0 ? 1 : 2;
        std::uint32_t c = more == 0 ? first : more == 1 ? first & 0x1FU : first & 0x0FU;
        for (int k = 0; k < more; ++k)
            c = c << 6U | (static_cast<unsigned char>(text[i++]) & 0x3FU);
        wide += number(c, 2);
    }
    return wide;
}

// Access compresses where every character fits one byte: a mark, then these bytes.
std::string jetText(const std::string& text) {
    std::string wide = ucs2(text);
    std::string narrow = "\xFF\xFE";
    for (std::size_t i = 0; i < wide.size(); i += 2) {
        if (wide[i + 1] != 0 || wide[i] == 0) return wide;
        narrow += wide[i];
    }
    return wide.size() > 2 ? narrow : wide;
}

bool isVariable(JetType type) {
    return type == JetType::Text || type == JetType::Memo || type == JetType::Ole ||
           type == JetType::Binary;
}

std::size_t fixedSize(JetType type) {
    switch (type) {
    case JetType::Byte:
        return 1;
    case JetType::Short:
        return 2;
    case JetType::Long:
    case JetType::Single:
        return 4;
    case JetType::Currency:
    case JetType::Double:
    case JetType::Date:
        return 8;
    case JetType::Numeric:
        return 17;
    default:
        return 0; // Booleans are in the mask of Nulls
    }
}

std::string fixedValue(JetType type, const JetValue& value) {
    const std::size_t size = fixedSize(type);
    std::string bytes(size, '\0');
    if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        if (type != JetType::Numeric) return number(static_cast<std::uint64_t>(*whole), int(size));
        // A sign, then four words of 32 bits, the highest first.
        const std::uint64_t magnitude = static_cast<std::uint64_t>(*whole < 0 ? -*whole : *whole);
        bytes[0] = *whole < 0 ? '\x80' : '\0';
        put(bytes, 9, number(magnitude >> 32U, 4));
        put(bytes, 13, number(magnitude, 4));
    } else if (const auto* real = std::get_if<double>(&value)) {
        if (type == JetType::Single)
            return number(std::bit_cast<std::uint32_t>(static_cast<float>(*real)), 4);
        return number(std::bit_cast<std::uint64_t>(*real), 8);
    }
    return bytes;
}

// RC4, in place.
void encipher(std::string& page, std::size_t from, std::size_t length, std::uint32_t key) {
    const std::string bytes = number(key, 4);
    std::array<unsigned char, 256> state{};
    std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
    for (unsigned i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + static_cast<unsigned char>(bytes[i % 4])) & 0xFFU;
        std::swap(state[i], state[j]);
    }
    for (unsigned n = 0, i = 0, j = 0; n < length; ++n) {
        i = (i + 1) & 0xFFU;
        j = (j + state[i]) & 0xFFU;
        std::swap(state[i], state[j]);
        const unsigned mask = state[(state[i] + state[j]) & 0xFFU];
        page[from + n] = static_cast<char>(static_cast<unsigned char>(page[from + n]) ^ mask);
    }
}

} // namespace

AccessWriter::AccessWriter() {
    for (int i = 0; i < 3; ++i) // the header, one that nobody reads, the catalogue's definition
        newPage();
    put(pages_[0], 0, std::string("\0\1\0\0Standard Jet DB\0\1", 21));
}

std::size_t AccessWriter::newPage() {
    pages_.emplace_back(pageSize, '\0');
    return pages_.size() - 1;
}

// Values longer than a row holds go to pages of their own, each with the place of the next.
std::string AccessWriter::memo(const std::string& text) {
    if (text.size() <= longestInline)
        return number(text.size(), 3) + '\x80' + std::string(8, '\0') + text;
    std::size_t next = 0;
    for (std::size_t end = text.size(); end > 0;) {
        const std::size_t length = (end - 1) % longestPart + 1;
        end -= length;
        const std::string part = number(next << 8U, 4) + text.substr(end, length);
        next = newPage();
        const std::size_t start = pageSize - part.size();
        put(pages_[next], 0,
            "\1\1" + number(start - 16, 2) + "LVAL" + number(0, 4) + number(1, 2) +
                number(start, 2));
        put(pages_[next], start, part);
    }
    return number(text.size(), 3) + '\0' + number(next << 8U, 4) + number(0, 4);
}

std::string AccessWriter::row(const std::vector<JetColumn>& columns, const JetRow& values) {
    std::string bytes = number(columns.size(), 2);
    std::string mask((columns.size() + 7) / 8, '\0');
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool* truth = std::get_if<bool>(&values[i]);
        if (truth ? *truth : !std::holds_alternative<std::monostate>(values[i]))
            mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << i % 8);
        if (!isVariable(columns[i].type)) bytes += fixedValue(columns[i].type, values[i]);
    }
    std::string offsets;
    int variable = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!isVariable(columns[i].type)) continue;
        offsets.insert(0, number(bytes.size(), 2));
        ++variable;
        const auto* text = std::get_if<std::string>(&values[i]);
        if (!text) continue;
        const bool raw = columns[i].type == JetType::Binary || columns[i].type == JetType::Ole;
        const std::string value = raw ? *text : jetText(*text);
        const bool longer = columns[i].type == JetType::Memo || columns[i].type == JetType::Ole;
        bytes += longer ? memo(value) : value;
    }
    if (variable > 0) bytes += number(bytes.size(), 2) + offsets + number(variable, 2);
    return bytes + mask;
}

void AccessWriter::writeRows(std::size_t definition, const std::vector<std::string>& rows) {
    std::vector<std::size_t> used;
    std::size_t free = 0; // where the page's last row starts
    std::size_t count = 0;
    for (const std::string& row : rows) {
        if (used.empty() || free < 14 + 2 * (count + 1) + row.size()) {
            used.push_back(newPage());
            put(pages_.back(), 0, "\1\1" + number(0, 2) + number(definition, 4));
            free = pageSize;
            count = 0;
        }
        std::string& page = pages_[used.back()];
        free -= row.size();
        put(page, free, row);
        put(page, 14 + 2 * count, number(free, 2));
        put(page, 12, number(++count, 2));
        put(page, 2, number(free - 14 - 2 * count, 2));
    }
    // The map of the pages in use is a row, too: a kind, a first page, a bit for each.
    std::string map(5 + pages_.size() / 8 + 1, '\0');
    for (const std::size_t page : used)
        map[5 + page / 8] = static_cast<char>(map[5 + page / 8] | 1 << page % 8);
    const std::size_t mapPage = newPage();
    put(pages_[mapPage], 0,
        "\1\1" + number(0, 10) + number(1, 2) + number(pageSize - map.size(), 2));
    put(pages_[mapPage], pageSize - map.size(), map);
    put(pages_[definition], 55, number(mapPage << 8U, 4) + number(mapPage << 8U, 4));
}

void AccessWriter::writeDefinition(std::size_t page, bool system,
                                   const std::vector<JetColumn>& columns,
                                   const std::vector<std::string>& rows) {
    std::string entries;
    std::string names;
    std::size_t fixed = 0;
    std::size_t variable = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const JetColumn& column = columns[i];
        const bool isFixed = !isVariable(column.type);
        const std::size_t length = column.type == JetType::Text     ? column.length * 2U
                                   : column.type == JetType::Binary ? 255U
                                                                    : fixedSize(column.type);
        std::string entry = number(static_cast<unsigned>(column.type), 1) + number(0, 4) +
                            number(i, 2) + number(variable, 2) + number(i, 2);
        entry += column.type == JetType::Numeric ? number(18, 1) + number(column.length, 1)
                                                 : number(0x409, 2);
        entry += number(0, 2) + number(isFixed ? 3 : 2, 1) + number(1, 1) + number(0, 4) +
                 number(fixed, 2) + number(length, 2);
        entries += entry;
        names += number(column.name.size() * 2, 2) + ucs2(column.name);
        isFixed ? fixed += fixedSize(column.type) : ++variable;
    }
    const std::string body = entries + names + "\xFF\xFF";
    std::string head = "\2\1" + number(pageSize - 63 - body.size(), 2) + number(0, 4) +
                       number(55 + body.size(), 4) + number(0, 4) + number(rows.size(), 4);
    head.resize(40);
    head += (system ? '\x53' : '\x4E') + number(columns.size(), 2) + number(variable, 2) +
            number(columns.size(), 2);
    put(pages_[page], 0, head);
    put(pages_[page], 63, body);
    writeRows(page, rows);
}

void AccessWriter::table(const std::string& name, const std::vector<JetColumn>& columns,
                         const std::vector<JetRow>& rows) {
    const std::size_t definition = newPage();
    std::vector<std::string> bytes;
    bytes.reserve(rows.size());
    for (const JetRow& each : rows)
        bytes.push_back(row(columns, each));
    writeDefinition(definition, false, columns, bytes);
    catalogue_.push_back({std::int64_t(definition), std::int64_t{0xF000001}, name, std::int64_t{1},
                          std::int64_t{0}, JetValue()});
}

void AccessWriter::save(const std::string& path, std::uint32_t key, const std::string& password) {
    const std::vector<JetColumn> columns{{"Id", JetType::Long},        {"ParentId", JetType::Long},
                                         {"Name", JetType::Text, 255}, {"Type", JetType::Short},
                                         {"Flags", JetType::Long},     {"LvProp", JetType::Ole}};
    std::vector<std::string> rows;
    for (const JetRow& each : catalogue_)
        rows.push_back(row(columns, each));
    writeDefinition(catalogueDefinition, true, columns, rows);
    put(pages_[0], 0x3E, number(key, 4));
    put(pages_[0], 0x42, ucs2(password));
    encipher(pages_[0], 0x18, 128, 0x6B39DAC7); // with a key that all files share
    for (std::size_t i = 1; i < pages_.size() && key != 0; ++i)
        encipher(pages_[i], 0, pageSize, key ^ static_cast<std::uint32_t>(i));
    std::ofstream file(path, std::ios::binary);
    for (const std::string& page : pages_)
        file << page;
}

} // namespace norvel::adodb
