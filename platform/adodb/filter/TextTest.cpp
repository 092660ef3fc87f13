#include "platform/adodb/filter/TextTest.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace norvel::adodb {

namespace {

bool isDictionary(const Segment& segment) {
    return segment.storage == Storage::Dictionary8 || segment.storage == Storage::Dictionary16;
}

bool isText(const Segment& segment) {
    return segment.storage == Storage::Text || isDictionary(segment);
}

} // namespace

// --- texts as the grid shows them ---

bool ShownTest::value(const Variant& value) const {
    if (value.isText()) return passes(value.text());
    if (value.type() == VarType::Bytes) return false;
    return passes(value.toDisplay());
}

std::vector<std::uint8_t> ShownTest::entries(const Cells& cells) const {
    std::vector<std::uint8_t> passing(cells.segment.entries);
    for (std::uint32_t i = 0; i < cells.segment.entries; ++i)
        passing[i] = passes(cells.segment.run(i)) ? 1 : 0;
    return passing;
}

// Where a row holds the number of its text: run is given a question about a row's number. False
// where it does not, or so few rows are looked at that their texts are fewer.
template <class Run>
bool ShownTest::byNumber(const Cells& cells, std::size_t looks, Run run) const {
    const Segment& segment = cells.segment;
    const auto with = [&](const std::vector<std::uint8_t>& passing, const auto* numbers) {
        run([numbers, flags = passing.data()](RowNumber row) { return flags[numbers[row]] != 0; });
        return true;
    };
    if (segment.storage == Storage::Boolean)
        return with({value(false) ? std::uint8_t{1} : std::uint8_t{0},
                     value(true) ? std::uint8_t{1} : std::uint8_t{0}},
                    segment.values<std::uint8_t>().data());
    if (!isDictionary(segment) || looks < segment.entries) return false;
    if (segment.storage == Storage::Dictionary8)
        return with(entries(cells), segment.values<std::uint8_t>().data());
    return with(entries(cells), segment.values<std::uint16_t>().data());
}

std::size_t ShownTest::selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                   RowNumber* rows) const {
    std::size_t count = 0;
    if (byNumber(cells, end - begin,
                 [&](auto test) { count = selectWhere(begin, end, rows, test); }))
        return count;
    if (isDictionary(cells.segment)) return ColumnTest::selectPlain(cells, begin, end, rows);
    return selectTexts(cells, begin, end, rows);
}

std::size_t ShownTest::refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const {
    if (byNumber(cells, count, [&](auto test) { count = refineWhere(rows, count, test); }))
        return count;
    if (isDictionary(cells.segment)) return ColumnTest::refinePlain(cells, rows, count);
    return refineTexts(cells, rows, count);
}

std::size_t ShownTest::selectTexts(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                   RowNumber* rows) const {
    return ColumnTest::selectPlain(cells, begin, end, rows);
}

std::size_t ShownTest::refineTexts(const Cells& cells, RowNumber* rows, std::size_t count) const {
    return ColumnTest::refinePlain(cells, rows, count);
}

bool ShownTest::plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const {
    return isText(segment) ? passes(segment.text(row)) : value(segment.value(row, type));
}

// --- their folded forms ---

std::size_t FoldedTest::confirmed(const Cells& cells, const FoldedSegment& folded, RowNumber* runs,
                                  std::size_t count) const {
    if (!mayDoubt(folded)) return count;
    return refineWhere(runs, count, [&](RowNumber run) {
        if (!isText(cells.segment)) return plainRow(cells.segment, cells.type, run);
        const std::string_view original = cells.segment.run(run);
        return !doubts(original) || passes(original);
    });
}

std::vector<std::uint8_t> FoldedTest::entries(const Cells& cells) const {
    const FoldedSegment* folded = cells.folded(cells.segment.rows);
    if (!folded) return ShownTest::entries(cells);
    std::vector<RowNumber> found(cells.segment.entries);
    const std::size_t count =
        confirmed(cells, *folded, found.data(),
                  selectRuns(folded->runs, 0, cells.segment.entries, found.data()));
    std::vector<std::uint8_t> passing(cells.segment.entries);
    for (std::size_t i = 0; i < count; ++i)
        passing[found[i]] = 1;
    return passing;
}

std::size_t FoldedTest::selectTexts(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                    RowNumber* rows) const {
    const FoldedSegment* folded = cells.folded(end - begin);
    if (!folded) return ShownTest::selectTexts(cells, begin, end, rows);
    return confirmed(cells, *folded, rows, selectRuns(folded->runs, begin, end, rows));
}

std::size_t FoldedTest::refineTexts(const Cells& cells, RowNumber* rows, std::size_t count) const {
    const FoldedSegment* folded = cells.folded(count);
    if (!folded) return ShownTest::refineTexts(cells, rows, count);
    return confirmed(cells, *folded, rows, refineRuns(folded->runs, rows, count));
}

// --- one text ---

TextTest::TextTest(TextMode mode, std::string text)
    : mode_(mode), text_(std::move(text)), folded_(foldText(text_)),
      characters_(isValidUtf8(folded_)) {}

std::string TextTest::key() const {
    return "text" + std::to_string(static_cast<int>(mode_)) + " " + folded_;
}

bool TextTest::impliesValue(const ColumnTest& other) const {
    const auto* wider = dynamic_cast<const TextTest*>(&other);
    if (!wider) return false;
    if (wider->mode_ == mode_ && wider->folded_ == folded_) return true;
    if (mode_ == TextMode::NotEqual) return false;
    if (mode_ == TextMode::Equal) return wider->passes(text_);
    if (wider->mode_ == TextMode::Contains) return wider->passes(text_);
    return wider->mode_ == TextMode::Begins && mode_ == TextMode::Begins && wider->passes(text_);
}

bool TextTest::passes(std::string_view text) const {
    switch (mode_) {
    case TextMode::Contains:
        return findText(text, text_) != std::string::npos;
    case TextMode::Begins:
        return matchText(text, text_).position == 0;
    case TextMode::Equal:
        return equalsText(text, text_);
    default:
        return !equalsText(text, text_);
    }
}

// run is given a question about a run's number.
template <class Run>
std::size_t TextTest::compared(const Runs& runs, Run run) const {
    const char* bytes = runs.bytes;
    const std::uint32_t* ends = runs.ends;
    const char* wanted = folded_.data();
    const std::size_t size = folded_.size();
    if (mode_ == TextMode::Begins)
        return run([=](RowNumber i) {
            return ends[i + 1] - ends[i] >= size && bytes[ends[i]] == wanted[0] &&
                   std::memcmp(bytes + ends[i], wanted, size) == 0;
        });
    const bool different = mode_ == TextMode::NotEqual;
    return run([=](RowNumber i) {
        const bool same =
            ends[i + 1] - ends[i] == size && std::memcmp(bytes + ends[i], wanted, size) == 0;
        return same != different;
    });
}

std::size_t TextTest::selectRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                                 RowNumber* found) const {
    if (trivial()) {
        if (!text_.empty()) return 0;
        std::iota(found, found + (end - begin), begin);
        return end - begin;
    }
    if (mode_ == TextMode::Contains) return scanRuns(runs, begin, end, folded_, found);
    return compared(runs, [=](auto test) { return selectWhere(begin, end, found, test); });
}

std::size_t TextTest::refineRuns(const Runs& runs, RowNumber* these, std::size_t count) const {
    if (trivial()) return text_.empty() ? count : 0;
    if (mode_ == TextMode::Contains) return scanThese(runs, these, count, folded_);
    return compared(runs, [=](auto test) { return refineWhere(these, count, test); });
}

bool TextTest::mayDoubt(const FoldedSegment& folded) const {
    return searches() && !trivial() && (folded.combining || !characters_);
}

bool TextTest::doubts(std::string_view original) const {
    return !characters_ || mayCombine(original);
}

// --- collation ---

std::string CollationTest::key() const {
    return "collation" + std::to_string(static_cast<int>(op_)) + " " + text_;
}

bool CollationTest::impliesValue(const ColumnTest& other) const {
    const auto* wider = dynamic_cast<const CollationTest*>(&other);
    return wider && wider->op_ == op_ && equalsText(wider->text_, text_);
}

bool CollationTest::passes(std::string_view text) const {
    return compares(op_, collateText(text, text_), 0);
}

} // namespace norvel::adodb
