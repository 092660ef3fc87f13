#include "platform/adodb/store/SegmentBuilder.h"

#include "platform/adodb/store/IsoDate.h"
#include "platform/adodb/store/RawConversion.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::size_t slabAlignment = 64;
constexpr std::size_t longestRun = std::size_t{16} * 1024; // longer texts stay out of the arena

std::size_t aligned(std::size_t bytes, std::size_t to) {
    return (bytes + to - 1) / to * to;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

void GrowingBytes::grow(std::size_t bytes) {
    const std::size_t wanted = std::max(size_ + bytes, capacity_ * 2);
    auto larger = std::make_unique_for_overwrite<char[]>(wanted);
    if (size_ != 0) std::memcpy(larger.get(), data_.get(), size_);
    data_ = std::move(larger);
    capacity_ = wanted;
}

SegmentBuilder::SegmentBuilder(DataTypeEnum type)
    : type_(type), class_(storageClass(type)), scale_(startScale(type)) {}

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
            doubles_[row] = *days;
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

void SegmentBuilder::appendRuns(const Batch& batch, int column, std::uint32_t from,
                                std::uint32_t to) {
    const RawKind* kinds = batch.kinds(column);
    const RawValue* values = batch.values(column);
    const RawKind own = class_ == StorageClass::Text ? RawKind::Text : RawKind::Bytes;
    std::size_t total = 0;
    for (std::uint32_t i = from; i < to; ++i)
        if (kinds[i] == own) total += values[i].place.length;
    const std::size_t firstByte = arena_.size();
    char* at = arena_.extend(total);
    std::size_t end = firstByte;
    for (std::uint32_t i = from, row = rows_; i < to; ++i, ++row) {
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
    if (own == RawKind::Text) makeValid(rows_, firstByte);
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
    if (class_ == StorageClass::Text || class_ == StorageClass::Bytes)
        ends_[rows_] = static_cast<std::uint32_t>(arena_.size());
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
        doubles_[row] = value.toDate().days;
        return true;
    case StorageClass::Scaled:
        if (type != VarType::Decimal && type != VarType::Currency) return false;
        return scaleDecimal(row, value.toDecimal());
    case StorageClass::Text:
        if (!value.isText() || value.text().size() > longestRun) return false;
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

SegmentBuilder::Layout SegmentBuilder::layout() const {
    Layout l{Storage::Null, 0, 0, 0};
    if (nulls_ == rows_) return l;
    const std::size_t rows = rows_;
    l.nulls = nulls_ ? (rows + 63) / 64 * 8 : 0;
    switch (class_) {
    case StorageClass::Boolean:
        l.storage = Storage::Boolean, l.data = rows;
        break;
    case StorageClass::Integer: {
        const bool narrow = least_ >= INT32_MIN && greatest_ <= INT32_MAX;
        l.storage = narrow ? Storage::Int32 : Storage::Int64;
        l.data = rows * (narrow ? 4 : 8);
        break;
    }
    case StorageClass::Double:
        l.storage = Storage::Double, l.data = rows * 8;
        break;
    case StorageClass::Date:
        l.storage = Storage::Date, l.data = rows * 8;
        break;
    case StorageClass::Scaled:
        l.storage = Storage::Scaled, l.data = rows * 8;
        break;
    case StorageClass::Text:
    case StorageClass::Bytes:
        l.storage = class_ == StorageClass::Text ? Storage::Text : Storage::Bytes;
        l.data = (rows + 1) * 4;
        l.arena = arena_.size();
        break;
    case StorageClass::Mixed:
        l.storage = Storage::Mixed;
        break;
    }
    return l;
}

std::size_t SegmentBuilder::slabBytes() const {
    const Layout l = layout();
    return aligned(l.nulls + aligned(l.data, 8) + l.arena, slabAlignment);
}

std::size_t SegmentBuilder::weight() const {
    return arena_.size() + exceptionBytes_ + exceptions_.size() * sizeof(Exceptional) +
           std::size_t{rows_} * 8;
}

void SegmentBuilder::copyNulls(std::byte* to) const {
    auto* words = reinterpret_cast<std::uint64_t*>(to);
    std::memset(words, 0, (std::size_t{rows_} + 63) / 64 * 8);
    for (std::uint32_t row = 0; row < rows_; ++row)
        words[row / 64] |= std::uint64_t{nullFlags_[row]} << (row % 64);
}

void SegmentBuilder::copyData(const Layout& l, std::byte* to) {
    switch (l.storage) {
    case Storage::Boolean:
        std::ranges::transform(integers_, reinterpret_cast<std::uint8_t*>(to),
                               [](std::int64_t v) { return static_cast<std::uint8_t>(v); });
        break;
    case Storage::Int32:
        std::ranges::transform(integers_, reinterpret_cast<std::int32_t*>(to),
                               [](std::int64_t v) { return static_cast<std::int32_t>(v); });
        break;
    case Storage::Int64:
    case Storage::Scaled:
        std::memcpy(to, integers_.data(), l.data);
        break;
    case Storage::Double:
    case Storage::Date:
        std::memcpy(to, doubles_.data(), l.data);
        break;
    case Storage::Text:
    case Storage::Bytes:
        std::memset(to, 0, 4);
        std::memcpy(to + 4, ends_.data(), l.data - 4);
        if (l.arena) std::memcpy(to + aligned(l.data, 8), arena_.data(), l.arena);
        break;
    case Storage::Null:
    case Storage::Mixed:
        break;
    }
}

Segment SegmentBuilder::finish(std::byte* slab) {
    const Layout l = layout();
    Segment segment;
    segment.storage = l.storage;
    segment.scale = scale_;
    segment.rows = rows_;
    if (l.nulls) {
        copyNulls(slab);
        segment.nulls = reinterpret_cast<const std::uint64_t*>(slab);
    }
    if (l.data) {
        std::byte* data = slab + l.nulls;
        copyData(l, data);
        segment.data = data;
        segment.arena = reinterpret_cast<const char*>(data + aligned(l.data, 8));
    }
    exceptions_.shrink_to_fit();
    segment.exceptions = std::move(exceptions_);

    exceptions_ = {};
    exceptionBytes_ = 0;
    rows_ = nulls_ = 0;
    least_ = greatest_ = widest_ = 0;
    nullFlags_.clear();
    integers_.clear();
    doubles_.clear();
    ends_.clear();
    arena_.shrink(0);
    return segment;
}

} // namespace norvel::adodb
