#include "platform/adodb/store/SegmentBuilder.h"

#include "platform/adodb/store/IsoDate.h"
#include "platform/adodb/store/RawConversion.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::size_t slabAlignment = 64;
constexpr std::size_t longestRun = std::size_t{16} * 1024; // longer texts stay out of the arena
constexpr std::uint32_t mostEntries = 16384;               // of a dictionary
constexpr std::uint32_t rowsToJudge = 4096;                // from so many on it must pay

std::size_t aligned(std::size_t bytes, std::size_t to) {
    return (bytes + to - 1) / to * to;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

SegmentBuilder::SegmentBuilder(DataTypeEnum type)
    : type_(type), class_(storageClass(type)), scale_(startScale(type)),
      numbering_(class_ == StorageClass::Text), tryNumbering_(numbering_) {}

void SegmentBuilder::startRows(std::uint32_t count) {
    const std::size_t rows = std::size_t{rows_} + count;
    nullFlags_.resize(rows);
    switch (class_) {
    case StorageClass::Boolean:
    case StorageClass::Integer:
    case StorageClass::Scaled:
        integers_.resize(rows);
        break;
    case StorageClass::Double:
    case StorageClass::Date:
        doubles_.resize(rows);
        break;
    case StorageClass::Text:
    case StorageClass::Bytes:
        if (numbering_)
            numbers_.resize(rows);
        else
            ends_.resize(rows);
        break;
    case StorageClass::Mixed:
        break;
    }
}

void SegmentBuilder::append(const Batch& batch, int column, std::uint32_t from, std::uint32_t to) {
    startRows(to - from);
    switch (class_) {
    case StorageClass::Boolean:
        appendBooleans(batch, column, from, to);
        break;
    case StorageClass::Integer:
        appendIntegers(batch, column, from, to);
        break;
    case StorageClass::Double:
        appendDoubles(batch, column, from, to);
        break;
    case StorageClass::Date:
        appendDates(batch, column, from, to);
        break;
    case StorageClass::Scaled:
        appendScaled(batch, column, from, to);
        break;
    case StorageClass::Text:
    case StorageClass::Bytes:
        appendRuns(batch, column, from, to);
        break;
    case StorageClass::Mixed:
        appendMixed(batch, column, from, to);
        break;
    }
    rows_ += to - from;
}

void SegmentBuilder::except(std::uint32_t row, Variant value) {
    if (value.isText())
        exceptionBytes_ += value.text().size();
    else if (value.type() == VarType::Bytes)
        exceptionBytes_ += value.bytes().size();
    exceptions_.push_back({row, std::move(value)});
}

void SegmentBuilder::exceptRaw(std::uint32_t row, const Batch& batch, RawKind kind,
                               RawValue value) {
    if (kind == RawKind::Null)
        markNull(row);
    else
        except(row, rawVariant(batch, kind, value));
}

void SegmentBuilder::setInteger(std::uint32_t row, std::int64_t value) {
    integers_[row] = value;
    least_ = std::min(least_, value);
    greatest_ = std::max(greatest_, value);
}

void SegmentBuilder::appendIntegers(const Batch& batch, int column, std::uint32_t from,
                                    std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
        if (kinds[i] == RawKind::Integer)
            setInteger(row, values[i].integer);
        else
            exceptRaw(row, batch, kinds[i], values[i]);
    }
}

void SegmentBuilder::appendBooleans(const Batch& batch, int column, std::uint32_t from,
                                    std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
        if (const auto value = rawBoolean(batch, kinds[i], values[i]))
            integers_[row] = *value ? 1 : 0;
        else
            exceptRaw(row, batch, kinds[i], values[i]);
    }
}

void SegmentBuilder::appendDoubles(const Batch& batch, int column, std::uint32_t from,
                                   std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
        if (const auto value = rawDouble(kinds[i], values[i]))
            doubles_[row] = *value;
        else
            exceptRaw(row, batch, kinds[i], values[i]);
    }
}

void SegmentBuilder::appendDates(const Batch& batch, int column, std::uint32_t from,
                                 std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
        if (const auto days = rawDate(batch, kinds[i], values[i]))
            setDays(row, *days);
        else
            exceptRaw(row, batch, kinds[i], values[i]);
    }
}

void SegmentBuilder::appendScaled(const Batch& batch, int column, std::uint32_t from,
                                  std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
        bool done = false;
        if (kinds[i] == RawKind::Real)
            done = scaleReal(row, values[i].real);
        else if (kinds[i] == RawKind::Integer)
            done = scaleInteger(row, values[i].integer);
        else if (const auto number = rawDecimal(batch, kinds[i], values[i]))
            done = scaleDecimal(row, *number);
        if (!done) exceptRaw(row, batch, kinds[i], values[i]);
    }
}

void SegmentBuilder::appendMixed(const Batch& batch, int column, std::uint32_t from,
                                 std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row)
        exceptRaw(row, batch, kinds[i], values[i]);
}

void SegmentBuilder::setDays(std::uint32_t row, double days) {
    doubles_[row] = days;
    const bool fits = days >= std::numeric_limits<std::int32_t>::min() &&
                      days <= std::numeric_limits<std::int32_t>::max();
    if (!fits || days != std::trunc(days)) wholeDays_ = false;
}

void SegmentBuilder::appendRuns(const Batch& batch, int column, std::uint32_t from,
                                std::uint32_t to) {
    const std::uint32_t last = rows_ + (to - from);
    if (numbering_) from = appendNumbered(batch, column, from, to);
    if (from == to) return;
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    const RawKind own = class_ == StorageClass::Text ? RawKind::Text : RawKind::Bytes;
    std::size_t total = 0;
    for (std::uint32_t i = from; i < to; ++i)
        if (kinds[i] == own) total += values[i].place.length;
    const std::uint32_t firstRow = last - (to - from);
    const std::size_t firstByte = arena_.size();
    char* at = arena_.extend(total);
    std::size_t end = firstByte;
    for (std::uint32_t i = from, row = firstRow; i < to; ++i, ++row) {
        if (kinds[i] == own) {
            const std::size_t length = values[i].place.length;
            if (length != 0) std::memcpy(at, batch.arena() + values[i].place.offset, length);
            at += length;
            end += length;
        } else {
            exceptRaw(row, batch, kinds[i], values[i]);
        }
        ends_[row] = static_cast<std::uint32_t>(end);
    }
    if (own == RawKind::Text) makeValid(firstRow, firstByte);
}

// Numbers the texts; where that stops to pay it gives up and returns the place in the batch from
// which texts go the ordinary way.
std::uint32_t SegmentBuilder::appendNumbered(const Batch& batch, int column, std::uint32_t from,
                                             std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    std::uint32_t row = rows_;
    for (std::uint32_t i = from; i < to; ++i, ++row) {
        if (kinds[i] != RawKind::Text) {
            exceptRaw(row, batch, kinds[i], values[i]);
            continue;
        }
        const std::string_view text = batch.text(values[i]);
        numbers_[row] = static_cast<std::uint16_t>(dictionary_.add(text));
        numberedBytes_ += text.size();
        if (dictionary_.size() <= mostEntries) continue;
        giveUpDictionary(row + 1);
        ends_.resize(std::size_t{rows_} + (to - from));
        return i + 1;
    }
    if (rows_ + (to - from) >= rowsToJudge && !dictionaryPays()) {
        giveUpDictionary(rows_ + (to - from));
        tryNumbering_ = false;
    }
    return to;
}

// Against numbers of two bytes and the entries; a small gain is not worth the second look-up.
bool SegmentBuilder::dictionaryPays() const {
    const std::size_t rows = numbers_.size();
    const std::size_t plain = numberedBytes_ + rows * 4;
    const std::size_t numbered = dictionary_.bytes().size() + dictionary_.size() * 4 + rows * 2;
    return numbered * 2 < plain;
}

// Turns the numbered rows into ordinary ones.
void SegmentBuilder::giveUpDictionary(std::uint32_t rows) {
    repairDictionary();
    ends_.resize(rows);
    arena_.shrink(0);
    for (std::uint32_t row = 0; row < rows; ++row)
        setRun(row, dictionary_.text(numbers_[row]));
    numbers_.clear();
    dictionary_.clear();
    numberedBytes_ = 0;
    numbering_ = false;
}

// Makes the entries valid UTF-8, each for itself; their numbers stay.
void SegmentBuilder::repairDictionary() {
    bool valid = true;
    for (std::uint32_t i = 0; i < dictionary_.size() && valid; ++i)
        valid = isValidUtf8(dictionary_.text(i));
    if (valid) return;
    std::vector<std::string> texts;
    texts.reserve(dictionary_.size());
    for (std::uint32_t i = 0; i < dictionary_.size(); ++i)
        texts.push_back(toValidUtf8(dictionary_.text(i)));
    dictionary_.replace(texts);
}

// Texts that are valid one after the other as a whole are valid each, provided that none begins
// inside a character.
void SegmentBuilder::makeValid(std::uint32_t firstRow, std::size_t firstByte) {
    bool startsInside = false;
    std::size_t start = firstByte;
    for (std::size_t row = firstRow; row < ends_.size(); start = ends_[row++])
        if (start < ends_[row] && isContinuation(arena_.data()[start])) startsInside = true;
    if (arena_.size() == firstByte) return;
    const std::string_view run(arena_.data() + firstByte, arena_.size() - firstByte);
    if (!startsInside && isValidUtf8(run)) return;

    const std::string old(run);
    const std::vector<std::uint32_t> ends(ends_.begin() + firstRow, ends_.end());
    arena_.shrink(firstByte);
    start = firstByte;
    for (std::size_t i = 0; i < ends.size(); start = ends[i++]) {
        const std::string text =
            toValidUtf8(std::string_view(old).substr(start - firstByte, ends[i] - start));
        setRun(firstRow + static_cast<std::uint32_t>(i), text);
    }
}

void SegmentBuilder::setRun(std::uint32_t row, std::string_view run) {
    char* at = arena_.extend(run.size());
    if (!run.empty()) std::memcpy(at, run.data(), run.size());
    ends_[row] = static_cast<std::uint32_t>(arena_.size());
}

// --- numbers with decimals ---

bool SegmentBuilder::scaleInteger(std::uint32_t row, std::int64_t value) {
    const std::int64_t factor = powerOfTen(scale_);
    if (value > widestScaled / factor || value < -widestScaled / factor)
        return scaleDecimal(row, Decimal(value));
    integers_[row] = value * factor;
    widest_ = std::max(widest_, std::abs(value * factor));
    return true;
}

// A double is the decimal number that reads back as it: at most 15 digits at the segment's scale,
// or else its shortest notation.
bool SegmentBuilder::scaleReal(std::uint32_t row, double value) {
    const auto factor = static_cast<double>(powerOfTen(scale_));
    const double scaled = std::nearbyint(value * factor);
    if (std::abs(scaled) < 1e15 && scaled / factor == value) {
        integers_[row] = static_cast<std::int64_t>(scaled);
        widest_ = std::max(widest_, std::abs(integers_[row]));
        return true;
    }
    const auto exact = shortestDecimal(value);
    return exact && scaleDecimal(row, *exact);
}

bool SegmentBuilder::scaleDecimal(std::uint32_t row, const Decimal& value) {
    if (value.scale() > scale_ && type_ != adCurrency && value.scale() <= greatestScale)
        raiseScale(value.scale());
    const bool narrow = value.high() == 0 && value.scale() <= scale_ &&
                        value.low() <= static_cast<std::uint64_t>(
                                           widestScaled / powerOfTen(scale_ - value.scale()));
    if (!narrow) {
        except(row, value);
        return true;
    }
    const auto magnitude =
        static_cast<std::int64_t>(value.low()) * powerOfTen(scale_ - value.scale());
    integers_[row] = value.negative() ? -magnitude : magnitude;
    widest_ = std::max(widest_, magnitude);
    return true;
}

// Where the numbers so far would no longer fit, the scale stays and the new number is exceptional.
void SegmentBuilder::raiseScale(unsigned scale) {
    const std::int64_t factor = powerOfTen(scale - scale_);
    if (widest_ > widestScaled / factor) return;
    for (std::int64_t& number : integers_)
        number *= factor;
    widest_ *= factor;
    scale_ = static_cast<std::uint8_t>(scale);
}

// --- one value ---

void SegmentBuilder::append(const Variant& value) {
    startRows(1);
    if (!ends_.empty()) ends_[rows_] = static_cast<std::uint32_t>(arena_.size());
    if (value.isNull() || value.isEmpty())
        markNull(rows_);
    else if (!setTyped(rows_, value))
        except(rows_, value);
    ++rows_;
}

bool SegmentBuilder::setTyped(std::uint32_t row, const Variant& value) {
    const VarType type = value.type();
    switch (class_) {
    case StorageClass::Boolean:
        if (type != VarType::Boolean) return false;
        integers_[row] = value.toBoolean() ? 1 : 0;
        return true;
    case StorageClass::Integer:
        if (!isWholeNumber(type)) return false;
        setInteger(row, value.toI8());
        return true;
    case StorageClass::Double:
        if (type != VarType::R8 && type != VarType::R4) return false;
        doubles_[row] = value.toDouble();
        return true;
    case StorageClass::Date:
        if (type != VarType::Date) return false;
        setDays(row, value.toDate().days);
        return true;
    case StorageClass::Scaled:
        if (type != VarType::Decimal && type != VarType::Currency) return false;
        return scaleDecimal(row, value.toDecimal());
    case StorageClass::Text:
        if (!value.isText() || value.text().size() > longestRun) return false;
        if (numbering_) giveUpDictionary(row + 1); // one by one: not worth it
        setRun(row, toValidUtf8(value.text()));
        return true;
    case StorageClass::Bytes:
        if (type != VarType::Bytes || value.bytes().size() > longestRun) return false;
        setRun(row, {reinterpret_cast<const char*>(value.bytes().data()), value.bytes().size()});
        return true;
    case StorageClass::Mixed:
        break;
    }
    return false;
}

// --- the segment ---

std::size_t SegmentBuilder::prepare() {
    layout_ = {};
    if (nulls_ == rows_) return 0;
    layout_.nulls = nulls_ ? (std::size_t{rows_} + 63) / 64 * 8 : 0;
    if (class_ == StorageClass::Text || class_ == StorageClass::Bytes)
        layRuns();
    else
        layNumbers();
    return aligned(layout_.nulls + aligned(layout_.data, 8) + aligned(layout_.ends, 8) +
                       layout_.arena,
                   slabAlignment);
}

void SegmentBuilder::layNumbers() {
    const bool narrow = least_ >= INT32_MIN && greatest_ <= INT32_MAX && widest_ <= INT32_MAX;
    std::size_t width = 8;
    switch (class_) {
    case StorageClass::Boolean:
        layout_.storage = Storage::Boolean, width = 1;
        break;
    case StorageClass::Integer:
        layout_.storage = narrow ? Storage::Int32 : Storage::Int64, width = narrow ? 4 : 8;
        break;
    case StorageClass::Double:
        layout_.storage = Storage::Double;
        break;
    case StorageClass::Date:
        layout_.storage = wholeDays_ ? Storage::Days : Storage::Date, width = wholeDays_ ? 4 : 8;
        break;
    case StorageClass::Scaled:
        layout_.storage = narrow ? Storage::Scaled32 : Storage::Scaled, width = narrow ? 4 : 8;
        break;
    default:
        layout_.storage = Storage::Mixed, width = 0;
    }
    layout_.data = rows_ * width;
}

void SegmentBuilder::layRuns() {
    if (numbering_ && !dictionaryPays()) giveUpDictionary(rows_);
    if (numbering_) {
        repairDictionary();
        const bool narrow = dictionary_.size() <= 256;
        layout_.storage = narrow ? Storage::Dictionary8 : Storage::Dictionary16;
        layout_.data = std::size_t{rows_} * (narrow ? 1 : 2);
        layout_.ends = (std::size_t{dictionary_.size()} + 1) * 4;
        layout_.arena = dictionary_.bytes().size();
        return;
    }
    layout_.storage = class_ == StorageClass::Text ? Storage::Text : Storage::Bytes;
    layout_.ends = (std::size_t{rows_} + 1) * 4;
    layout_.arena = arena_.size();
}

std::size_t SegmentBuilder::weight() const {
    return arena_.size() + dictionary_.bytes().size() + exceptionBytes_ +
           exceptions_.size() * sizeof(Exceptional) + std::size_t{rows_} * 8;
}

void SegmentBuilder::copyNulls(std::byte* to) const {
    auto* words = reinterpret_cast<std::uint64_t*>(to);
    std::memset(words, 0, (std::size_t{rows_} + 63) / 64 * 8);
    for (std::uint32_t row = 0; row < rows_; ++row)
        words[row / 64] |= std::uint64_t{nullFlags_[row]} << (row % 64);
}

namespace {

template <class To, class From>
void copyAs(const std::vector<From>& from, std::byte* to) {
    std::ranges::transform(from, reinterpret_cast<To*>(to),
                           [](From value) { return static_cast<To>(value); });
}

} // namespace

void SegmentBuilder::copyData(std::byte* to) const {
    switch (layout_.storage) {
    case Storage::Boolean:
        copyAs<std::uint8_t>(integers_, to);
        break;
    case Storage::Int32:
    case Storage::Scaled32:
        copyAs<std::int32_t>(integers_, to);
        break;
    case Storage::Int64:
    case Storage::Scaled:
        std::memcpy(to, integers_.data(), layout_.data);
        break;
    case Storage::Days:
        copyAs<std::int32_t>(doubles_, to);
        break;
    case Storage::Double:
    case Storage::Date:
        std::memcpy(to, doubles_.data(), layout_.data);
        break;
    case Storage::Dictionary8:
        copyAs<std::uint8_t>(numbers_, to);
        break;
    case Storage::Dictionary16:
        std::memcpy(to, numbers_.data(), layout_.data);
        break;
    case Storage::Null:
    case Storage::Text:
    case Storage::Bytes:
    case Storage::Mixed:
        break;
    }
}

// Offsets and arena, of the rows or of the dictionary's entries.
void SegmentBuilder::copyRuns(Segment& segment, std::byte* to) const {
    const bool numbered = numbering_;
    const auto& ends = numbered ? dictionary_.ends() : ends_;
    const char* bytes = numbered ? dictionary_.bytes().data() : arena_.data();
    std::memset(to, 0, 4);
    std::memcpy(to + 4, ends.data(), layout_.ends - 4);
    std::byte* arena = to + aligned(layout_.ends, 8);
    if (layout_.arena) std::memcpy(arena, bytes, layout_.arena);
    segment.ends = reinterpret_cast<const std::uint32_t*>(to);
    segment.arena = reinterpret_cast<const char*>(arena);
    segment.entries = numbered ? dictionary_.size() : 0;
}

Segment SegmentBuilder::finish(std::byte* slab) {
    Segment segment;
    segment.storage = layout_.storage;
    segment.scale = scale_;
    segment.rows = rows_;
    if (layout_.nulls) {
        copyNulls(slab);
        segment.nulls = reinterpret_cast<const std::uint64_t*>(slab);
    }
    std::byte* data = slab + layout_.nulls;
    if (layout_.data) {
        copyData(data);
        segment.data = data;
    }
    if (layout_.ends) copyRuns(segment, data + aligned(layout_.data, 8));
    exceptions_.shrink_to_fit();
    segment.exceptions = std::move(exceptions_);
    startAfresh();
    return segment;
}

void SegmentBuilder::startAfresh() {
    exceptions_ = {};
    exceptionBytes_ = numberedBytes_ = 0;
    rows_ = nulls_ = 0;
    least_ = greatest_ = widest_ = 0;
    wholeDays_ = true;
    numbering_ = tryNumbering_;
    nullFlags_.clear();
    integers_.clear();
    doubles_.clear();
    ends_.clear();
    arena_.shrink(0);
    numbers_.clear();
    dictionary_.clear();
}

} // namespace norvel::adodb
