// The wide scan, by every width that this processor has, against a plain search text by text; and
// the folded texts that it runs over.
#include "platform/adodb/filter/FoldedColumn.h"
#include "platform/adodb/filter/WideScan.h"
#include "platform/adodb/store/GroupBuilder.h"
#include "platform/runtime/Parallel.h"
#include "platform/runtime/Text.h"
#include "tests/platform/adodb/AdodbTest.h"

#include <algorithm>
#include <memory>
#include <random>

namespace norvel::adodb {
namespace {

// Texts behind each other in memory of exactly their size.
class Texts {
  public:
    explicit Texts(const std::vector<std::string>& texts)
        : ends_(1), count_(static_cast<std::uint32_t>(texts.size())) {
        std::string all;
        for (const std::string& text : texts) {
            all += text;
            ends_.push_back(static_cast<std::uint32_t>(all.size()));
        }
        bytes_ = std::make_unique<char[]>(all.size());
        std::ranges::copy(all, bytes_.get());
    }
    Runs runs() const { return {bytes_.get(), ends_.data(), count_}; }

  private:
    std::unique_ptr<char[]> bytes_;
    std::vector<std::uint32_t> ends_;
    std::uint32_t count_;
};

RowList expected(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                 const std::string& needle) {
    RowList rows;
    for (std::uint32_t run = begin; run < end; ++run)
        if (runs[run].find(needle) != std::string_view::npos) rows.push_back(run);
    return rows;
}

void check(const Runs& runs, std::uint32_t begin, std::uint32_t end, const std::string& needle) {
    const RowList wanted = expected(runs, begin, end, needle);
    for (const ScanWidth width : scanWidths()) {
        SCOPED_TRACE("width " + std::to_string(static_cast<int>(width)) + ", needle " + needle);
        RowList found(end - begin);
        found.resize(scanRuns(runs, begin, end, needle, found.data(), width));
        ASSERT_EQ(found, wanted);
        RowList these;
        for (std::uint32_t run = begin; run < end; ++run)
            these.push_back(run);
        these.resize(scanThese(runs, these.data(), these.size(), needle, width));
        ASSERT_EQ(these, wanted);
    }
}

TEST(FilterScan, EveryWidthIsThere) {
    EXPECT_EQ(scanWidths().front(), ScanWidth::One);
#ifdef __SSE2__
    EXPECT_GE(scanWidths().size(), 2U);
#endif
    EXPECT_EQ(widestScan(), scanWidths().back());
}

TEST(FilterScan, ANeedleNeverStandsAcrossTwoTexts) {
    const Texts texts({"xxro", "sxx", "", "ro", "", "s", "aros", "ros", "r", "o", "s"});
    check(texts.runs(), 0, 11, "ros");
    check(texts.runs(), 0, 5, "ros");
    check(texts.runs(), 6, 7, "ros");
    check(texts.runs(), 3, 3, "ros");
}

TEST(FilterScan, TextsOfNoBytesAndNeedlesLongerThanAllTexts) {
    check(Texts({"", "", ""}).runs(), 0, 3, "a");
    check(Texts({"a", "", "b"}).runs(), 0, 3, "a");
    check(Texts({"a", "", "b"}).runs(), 0, 3, std::string(100, 'a'));
    check(Texts({"abc"}).runs(), 0, 1, "abc");
    check(Texts({"abc"}).runs(), 0, 1, "abcd");
}

TEST(FilterScan, LongTextsAreLeftAfterTheirFirstMatch) {
    std::vector<std::string> texts;
    texts.push_back(std::string(20'000, 'a') + "b");
    texts.push_back(std::string(20'000, 'b'));
    texts.emplace_back("ab");
    texts.push_back(std::string(4095, 'x') + "ab"); // at the edge of a stretch
    texts.push_back(std::string(50'000, 'a'));
    for (const char* needle : {"a", "ab", "aab", "b", "bb", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab"})
        check(Texts(texts).runs(), 0, 5, needle);
}

TEST(FilterScan, RandomTextsAndNeedles) {
    std::mt19937 random(1311);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> texts(1 + random() % 120);
        const unsigned letters = 2 + random() % 3;
        for (std::string& text : texts)
            for (unsigned n = random() % (round % 10 == 0 ? 90 : 20); n > 0; --n)
                text += static_cast<char>('a' + random() % letters);
        const Texts memory(texts);
        for (int i = 0; i < 8; ++i) {
            const auto begin = static_cast<std::uint32_t>(random() % texts.size());
            const auto end =
                begin + static_cast<std::uint32_t>(random() % (texts.size() - begin + 1));
            // A needle that is there, or one that hardly is.
            std::string needle = texts[random() % texts.size()];
            const std::size_t from = random() % (needle.size() + 1);
            needle = needle.substr(from, 1 + random() % 12);
            if (needle.empty() || random() % 4 == 0)
                needle += static_cast<char>('a' + random() % 4);
            check(memory.runs(), begin, end, needle);
            check(memory.runs(), 0, static_cast<std::uint32_t>(texts.size()), needle);
        }
    }
}

TEST(FilterScan, OfGivenTextsTheOrderIsKept) {
    const Texts texts({"ros", "x", "aros", "rosa", "ro"});
    for (const ScanWidth width : scanWidths()) {
        RowList these{3, 1, 0, 4, 2};
        these.resize(scanThese(texts.runs(), these.data(), these.size(), "ros", width));
        EXPECT_EQ(these, (RowList{3, 0, 2}));
    }
}

// --- folded texts ---

std::shared_ptr<ColumnStore> storeOf(const std::vector<std::string>& texts) {
    auto store = std::make_shared<ColumnStore>(std::vector{describeColumn("c", adVarWChar)});
    GroupBuilder builder(store);
    Batch batch(1);
    for (std::size_t i = 0; i < texts.size();) {
        batch.reset(batch.capacityLimit());
        bool more = true;
        while (more && i < texts.size()) {
            EXPECT_TRUE(batch.setText(0, texts[i].data(), texts[i].size()));
            ++i;
            more = batch.endRow();
        }
        builder.take(batch);
    }
    builder.publish();
    return store;
}

// Texts that hardly repeat, so that they are stored one by one.
std::vector<std::string> numbered(int count, const std::vector<std::string>& words) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        texts.push_back(words[static_cast<std::size_t>(i) % words.size()] +
                        std::to_string(i * 7919 % 1'000'003));
    return texts;
}

std::shared_ptr<const FoldedSegment> foldedOf(const ColumnStore& store) {
    auto folded =
        store.derived().of<FoldedColumn>(0)->segment(0, store.group(0).segment(0), adVarWChar);
    const Segment& segment = store.group(0).segment(0);
    for (std::uint32_t run = 0; run < folded->runs.count; ++run)
        EXPECT_EQ(folded->runs[run], foldText(segment.run(run)));
    return folded;
}

TEST(FilterFolding, SmallAsciiCostsNoMemory) {
    const auto store = storeOf(numbered(3000, {"rossi ", "bianchi, via ", "[x] @`{ "}));
    ASSERT_EQ(store->group(0).segment(0).storage, Storage::Text);
    const auto folded = foldedOf(*store);
    EXPECT_EQ(folded->memory, 0U);
    EXPECT_EQ(folded->runs.bytes, store->group(0).segment(0).arena);
    EXPECT_FALSE(folded->combining);
}

TEST(FilterFolding, WhereLengthsStayTheEndsAreShared) {
    const auto store =
        storeOf(numbered(3000, {"Rossi ", "CITTÀ ", "Èlite ", "ÇÉ×÷ÿŸ ", "ß ", "ΣΟΦΟΣ ", "И "}));
    const auto folded = foldedOf(*store);
    EXPECT_EQ(folded->runs.ends, store->group(0).segment(0).ends);
    EXPECT_EQ(folded->memory, store->group(0).segment(0).ends[3000]);
    EXPECT_TRUE(folded->combining); // the Greek ones
}

TEST(FilterFolding, WhereLengthsDifferFoldedTextsLieByThemselves) {
    const auto store =
        storeOf(numbered(3000, {"ABC ", "ſ", "Ⱥ ", "a\u0300 ", "A\u0300\u0316 ", "J\u030C", "ẞ", "",
                                "İı", "K" /* Kelvin */, "\U00010400"}));
    const auto folded = foldedOf(*store);
    EXPECT_NE(folded->runs.ends, store->group(0).segment(0).ends);
    EXPECT_TRUE(folded->combining);
    EXPECT_GT(folded->memory, 12'000U);
}

TEST(FilterFolding, ADictionarysEntriesAreFolded) {
    std::vector<std::string> texts(1000, "Milano");
    for (std::size_t i = 0; i < texts.size(); i += 3)
        texts[i] = i % 2 == 0 ? "FORLÌ" : "";
    const auto store = storeOf(texts);
    ASSERT_EQ(store->group(0).segment(0).storage, Storage::Dictionary8);
    EXPECT_EQ(foldedOf(*store)->runs.count, store->group(0).segment(0).entries);
}

// Many threads ask for the same groups at once: each is folded once, and all read the same.
TEST(FilterFolding, IsMadeOnceWhoeverAsksFirst) {
    const auto store = storeOf(numbered(150'000, {"Rossi ", "CITTÀ ", "a\u0300"}));
    ASSERT_GT(store->groups(), 1U);
    const std::size_t groups = store->groups();
    std::vector<std::shared_ptr<const FoldedSegment>> asked(groups * 8);
    runParallel(asked.size(), [&](std::size_t i) {
        asked[i] = store->derived().of<FoldedColumn>(0)->segment(
            i % groups, store->group(i % groups).segment(0), adVarWChar);
    });
    for (std::size_t i = groups; i < asked.size(); ++i)
        EXPECT_EQ(asked[i], asked[i % groups]);
    EXPECT_GT(store->derived().of<FoldedColumn>(0)->memory(), 0U);
    EXPECT_EQ(store->derived().of<FoldedColumn>(0)->made(groups), nullptr);
}

} // namespace
} // namespace norvel::adodb
