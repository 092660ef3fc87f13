#include "platform/spreadsheet/SharedStrings.h"

#include "platform/runtime/Text.h"
#include "platform/spreadsheet/Records.h"

#include <algorithm>
#include <functional>

namespace norvel::spreadsheet {

namespace {

constexpr std::size_t slotCount = 8192;     // a power of two
constexpr std::size_t longestRepeated = 64; // bytes: longer texts seldom repeat

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The code point at position, which moves behind it. text is valid UTF-8.
char32_t nextCodePoint(std::string_view text, std::size_t& position) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(position);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t point = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i)
        point = point << 6U | (byte(position + i) & 0x3FU);
    position += length;
    return point;
}

// Appends UTF-16 units, at most limit in all; false where the text was longer.
bool toUtf16(std::string_view utf8, std::size_t limit, std::vector<char16_t>& out) {
    out.clear();
    for (std::size_t position = 0; position < utf8.size();) {
        const char32_t point = nextCodePoint(utf8, position);
        const std::size_t units = point < 0x10000 ? 1 : 2;
        if (out.size() + units > limit) return false;
        if (units == 1) {
            out.push_back(static_cast<char16_t>(point));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10U)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FFU)));
        }
    }
    return true;
}

} // namespace

TextNumbers::TextNumbers() : slots_(slotCount) {}

TextNumbers::Numbered TextNumbers::number(std::string_view text) {
    if (text.size() > longestRepeated) return {count_++, true};
    Slot& slot = slots_[std::hash<std::string_view>{}(text) & (slotCount - 1)];
    if (slot.used && slot.text == text) return {slot.number, false};
    slot.used = true;
    slot.text.assign(text);
    slot.number = count_;
    return {count_++, true};
}

TextRecords::TextRecords(bool beginsTable) {
    if (beginsTable) beginRecord(true);
}

void TextRecords::beginRecord(bool first) {
    out_.put16(static_cast<unsigned>(first ? RecordType::Sst : RecordType::Continue));
    out_.put16(0);
    recordBegin_ = out_.size();
    if (first) out_.zeros(8);
    open_ = true;
}

void TextRecords::endRecord() {
    if (!open_) return;
    out_.set(recordBegin_ - 2, static_cast<std::uint16_t>(out_.size() - recordBegin_));
    open_ = false;
}

std::size_t TextRecords::room() const {
    return open_ ? longestRecord - (out_.size() - recordBegin_) : 0;
}

void TextRecords::finish() {
    endRecord();
}

void TextRecords::add(std::string_view text) {
    if (isAscii(text))
        addBytes(text);
    else if (isValidUtf8(text))
        addWide(text);
    else
        addWide(toValidUtf8(text));
}

void TextRecords::addBytes(std::string_view ascii) {
    if (ascii.size() > longestText) {
        ++cut_;
        ascii = ascii.substr(0, longestText);
    }
    addUnits(reinterpret_cast<const std::uint8_t*>(ascii.data()), ascii.size(), 0);
}

void TextRecords::addWide(std::string_view utf8) {
    if (!toUtf16(utf8, longestText, wide_)) ++cut_;
    const bool narrow =
        std::all_of(wide_.begin(), wide_.end(), [](char16_t unit) { return unit < 0x100; });
    if (narrow) {
        narrow_.assign(wide_.begin(), wide_.end());
        addUnits(narrow_.data(), narrow_.size(), 0);
    } else {
        addUnits(wide_.data(), wide_.size(), 1);
    }
}

namespace {

// How many of the units go into a record that has room for so many: a pair of surrogates stays
// together, since some readers decode each record by itself.
template <class Unit>
std::size_t wholePart(const Unit* units, std::size_t count, std::size_t room) {
    if (count <= room) return count;
    if constexpr (sizeof(Unit) == 2)
        if ((units[room - 1] & 0xFC00U) == 0xD800U) return room - 1;
    return room;
}

} // namespace

// [MS-XLS] 2.5.294 and 2.4.58: a text's head and its first units stand in one record; where its
// units go on in the next, that begins with the flag anew.
template <class Unit>
void TextRecords::addUnits(const Unit* units, std::size_t count, unsigned flag) {
    constexpr std::size_t headBytes = 3;
    constexpr std::size_t leastBytes = 2 * sizeof(Unit); // a pair fits
    if (room() < headBytes + leastBytes) {
        endRecord();
        beginRecord(false);
    }
    out_.put16(static_cast<unsigned>(count));
    out_.put8(flag);
    for (std::size_t written = 0; written < count;) {
        if (room() < leastBytes) {
            endRecord();
            beginRecord(false);
            out_.put8(flag);
        }
        const std::size_t part = wholePart(units + written, count - written, room() / sizeof(Unit));
        std::memcpy(out_.extend(part * sizeof(Unit)), units + written, part * sizeof(Unit));
        written += part;
    }
}

} // namespace norvel::spreadsheet
