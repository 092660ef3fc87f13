// Conditions on texts.
#pragma once

#include "platform/adodb/filter/NumberTest.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace norvel::adodb {

// Asks a question of each text, and of the text that the grid shows of any other value. Each text
// of a dictionary is looked at once.
class ShownTest : public ValueTest {
  public:
    bool value(const Variant& value) const override;

  protected:
    virtual bool passes(std::string_view text) const = 0;
    // Of each entry of a dictionary, whether it passes.
    virtual std::vector<std::uint8_t> entries(const Cells& cells) const;
    // selectPlain and refinePlain of what is neither a dictionary nor Boolean.
    virtual std::size_t selectTexts(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                                    RowNumber* rows) const;
    virtual std::size_t refineTexts(const Cells& cells, RowNumber* rows, std::size_t count) const;

    std::size_t selectPlain(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                            RowNumber* rows) const override;
    std::size_t refinePlain(const Cells& cells, RowNumber* rows, std::size_t count) const override;
    bool plainRow(const Segment& segment, DataTypeEnum type, std::uint32_t row) const override;

  private:
    template <class Run>
    bool byNumber(const Cells& cells, std::size_t looks, Run run) const;
};

// Asks it of the folded forms.
class FoldedTest : public ShownTest {
  public:
    bool scans(const Segment& segment) const override { return segment.storage == Storage::Text; }

  protected:
    // As select and refine, of runs.
    virtual std::size_t selectRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                                   RowNumber* found) const = 0;
    virtual std::size_t refineRuns(const Runs& runs, RowNumber* these, std::size_t count) const = 0;
    // Whether a run of those that passed may yet not pass, its original being such a text.
    virtual bool mayDoubt(const FoldedSegment&) const { return false; }
    virtual bool doubts(std::string_view) const { return false; }

    std::vector<std::uint8_t> entries(const Cells& cells) const override;
    std::size_t selectTexts(const Cells& cells, std::uint32_t begin, std::uint32_t end,
                            RowNumber* rows) const override;
    std::size_t refineTexts(const Cells& cells, RowNumber* rows, std::size_t count) const override;

  private:
    std::size_t confirmed(const Cells& cells, const FoldedSegment& folded, RowNumber* runs,
                          std::size_t count) const;
};

enum class TextMode { Equal, NotEqual, Begins, Contains };

class TextTest : public FoldedTest {
  public:
    TextTest(TextMode mode, std::string text);
    std::string key() const override;
    Cost cost() const override { return mode_ == TextMode::Contains ? Cost::Search : Cost::Text; }

    TextMode mode() const { return mode_; }
    const std::string& folded() const { return folded_; }

  protected:
    bool impliesValue(const ColumnTest& other) const override;
    bool passes(std::string_view text) const override;
    std::size_t selectRuns(const Runs& runs, std::uint32_t begin, std::uint32_t end,
                           RowNumber* found) const override;
    std::size_t refineRuns(const Runs& runs, RowNumber* these, std::size_t count) const override;
    bool mayDoubt(const FoldedSegment& folded) const override;
    bool doubts(std::string_view original) const override;

  private:
    bool searches() const { return mode_ == TextMode::Begins || mode_ == TextMode::Contains; }
    // Every text passes, or none does, whatever the texts are.
    bool trivial() const { return searches() && folded_.empty(); }
    template <class Run>
    std::size_t compared(const Runs& runs, Run run) const;

    TextMode mode_;
    std::string text_;
    std::string folded_;
    bool characters_; // what is folded is UTF-8: it begins and ends with whole characters
};

// < and > by Italian collation, which no folded form tells.
class CollationTest : public ShownTest {
  public:
    CollationTest(FilterOperator op, std::string text) : op_(op), text_(std::move(text)) {}
    std::string key() const override;
    Cost cost() const override { return Cost::Collation; }

  protected:
    bool impliesValue(const ColumnTest& other) const override;
    bool passes(std::string_view text) const override;

  private:
    FilterOperator op_;
    std::string text_;
};

} // namespace norvel::adodb
