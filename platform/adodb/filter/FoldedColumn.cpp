#include "platform/adodb/filter/FoldedColumn.h"

#include "platform/runtime/Text.h"
#include "platform/runtime/Utf8.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace norvel::adodb {

namespace {

// From here on UTF-8's first bytes begin characters that may combine (U+0300).
constexpr unsigned char leadOfCombining = 0xCC;

// Eight bytes, those of capital ASCII letters in small letters, others as they are.
std::uint64_t lowered(std::uint64_t eight) {
    const std::uint64_t low = eight & ~highBits;
    const std::uint64_t changed = low ^ lowerAscii(low);
    return eight | (changed & ~((eight & highBits) >> 2U));
}

// Writes the bytes with ASCII in small letters. Returns what was seen: whether anything changed,
// and whether all is ASCII.
struct Lowered {
    bool same = true;
    bool ascii = true;
};
Lowered lower(const char* from, std::size_t size, char* to) {
    std::uint64_t changed = 0;
    std::uint64_t all = 0;
    std::size_t at = 0;
    for (; at + 8 <= size; at += 8) {
        const std::uint64_t eight = eightBytes(from + at);
        const std::uint64_t low = lowered(eight);
        changed |= eight ^ low;
        all |= eight;
        std::memcpy(to + at, &low, sizeof low);
    }
    for (; at < size; ++at) {
        to[at] = lowerAscii(from[at]);
        changed |= static_cast<unsigned char>(from[at] ^ to[at]);
        all |= static_cast<unsigned char>(from[at]);
    }
    return {changed == 0, (all & highBits) == 0};
}

// Texts folded one by one, each written where it lies in the originals as long as folding keeps the
// lengths; then behind each other.
class Folding {
  public:
    Folding(const Runs& from, FoldedSegment& to) : from_(from), to_(to) {}

    // The bytes are there with their ASCII folded.
    void run() {
        for (std::uint32_t i = 0; i < from_.count; ++i) {
            const std::string_view text = from_[i];
            if (asciiPrefix(text) == text.size()) {
                if (moved_)
                    append(std::string_view(to_.ownBytes.get() + from_.ends[i], text.size()));
            } else {
                fold(i, text);
            }
            if (moved_) ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
        }
        if (moved_) settle();
    }

  private:
    void fold(std::uint32_t i, std::string_view text) {
        const std::string folded = foldText(text);
        to_.combining = to_.combining || mayCombine(text);
        if (!moved_ && folded.size() != text.size()) move(i);
        if (moved_)
            append(folded);
        else
            std::memcpy(to_.ownBytes.get() + from_.ends[i], folded.data(), folded.size());
    }
    // From this run on lengths differ.
    void move(std::uint32_t i) {
        moved_ = true;
        ends_.assign(from_.ends, from_.ends + i + 1);
        bytes_.reserve(from_.ends[from_.count] + 64);
        bytes_.assign(to_.ownBytes.get(), from_.ends[i]);
    }
    void append(std::string_view folded) { bytes_.append(folded); }
    void settle() {
        to_.ownBytes = std::make_unique_for_overwrite<char[]>(bytes_.size());
        std::memcpy(to_.ownBytes.get(), bytes_.data(), bytes_.size());
        to_.ownEnds = std::make_unique_for_overwrite<std::uint32_t[]>(ends_.size());
        std::ranges::copy(ends_, to_.ownEnds.get());
        to_.runs = {to_.ownBytes.get(), to_.ownEnds.get(), from_.count};
        to_.memory = bytes_.size() + ends_.size() * sizeof(std::uint32_t);
    }

    const Runs& from_;
    FoldedSegment& to_;
    bool moved_ = false;
    std::string bytes_;
    std::vector<std::uint32_t> ends_;
};

std::shared_ptr<const FoldedSegment> foldRuns(const Runs& from) {
    auto made = std::make_shared<FoldedSegment>();
    const std::size_t size = from.ends[from.count];
    made->ownBytes = std::make_unique_for_overwrite<char[]>(size);
    made->runs = {made->ownBytes.get(), from.ends, from.count};
    made->memory = size;
    const Lowered seen = lower(from.bytes, size, made->ownBytes.get());
    if (!seen.ascii) {
        Folding(from, *made).run();
    } else if (seen.same) {
        made->ownBytes.reset();
        made->runs = from;
        made->memory = 0;
    }
    return made;
}

// What the grid shows of values that are not texts.
std::shared_ptr<const FoldedSegment> foldShown(const Segment& segment, DataTypeEnum type) {
    auto made = std::make_shared<FoldedSegment>();
    std::string bytes;
    made->ownEnds = std::make_unique_for_overwrite<std::uint32_t[]>(segment.rows + std::size_t{1});
    made->ownEnds[0] = 0;
    for (std::uint32_t row = 0; row < segment.rows; ++row) {
        if (!segment.isNull(row) && !segment.exception(row)) {
            const std::string shown = segment.value(row, type).toDisplay();
            made->combining = made->combining || mayCombine(shown);
            bytes += foldText(shown);
        }
        made->ownEnds[row + 1] = static_cast<std::uint32_t>(bytes.size());
    }
    made->ownBytes = std::make_unique_for_overwrite<char[]>(bytes.size());
    std::ranges::copy(bytes, made->ownBytes.get());
    made->runs = {made->ownBytes.get(), made->ownEnds.get(), segment.rows};
    made->memory = bytes.size() + (segment.rows + std::size_t{1}) * sizeof(std::uint32_t);
    return made;
}

std::shared_ptr<const FoldedSegment> fold(const Segment& segment, DataTypeEnum type) {
    switch (segment.storage) {
    case Storage::Text:
        return foldRuns({segment.arena, segment.ends, segment.rows});
    case Storage::Dictionary8:
    case Storage::Dictionary16:
        return foldRuns({segment.arena, segment.ends, segment.entries});
    default:
        return foldShown(segment, type);
    }
}

} // namespace

bool mayCombine(std::string_view text) {
    return std::ranges::any_of(
        text, [](char c) { return static_cast<unsigned char>(c) >= leadOfCombining; });
}

FoldedColumn::Slot& FoldedColumn::slot(std::size_t group) {
    const std::scoped_lock lock(mutex_);
    return slots_[group];
}

std::shared_ptr<const FoldedSegment>
FoldedColumn::segment(std::size_t group, const Segment& segment, DataTypeEnum type) {
    Slot& kept = slot(group);
    const std::scoped_lock lock(kept.mutex);
    if (!kept.made) kept.made = fold(segment, type);
    return kept.made;
}

std::shared_ptr<const FoldedSegment> FoldedColumn::made(std::size_t group) {
    Slot& kept = slot(group);
    const std::scoped_lock lock(kept.mutex);
    return kept.made;
}

std::size_t FoldedColumn::memory() {
    std::size_t sum = 0;
    const std::scoped_lock lock(mutex_);
    for (auto& [group, kept] : slots_) {
        const std::scoped_lock making(kept.mutex);
        if (kept.made) sum += kept.made->memory;
    }
    return sum;
}

} // namespace norvel::adodb
