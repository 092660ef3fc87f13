#include "platform/adodb/sort/ColumnRanks.h"

#include "platform/adodb/sort/CellOrder.h"
#include "platform/adodb/sort/ParallelSort.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace norvel::adodb {

namespace {

constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

// How a column's numbers become keys.
struct NumberForm {
    enum class Kind : std::uint8_t { Whole, Scaled, Real, Exact }; // Exact: of several forms
    Kind kind = Kind::Whole;
    std::uint8_t scale = 0;
    bool operator==(const NumberForm&) const = default;
};

template <class Key>
struct Keyed {
    Key key;
    std::uint32_t at = 0; // place in the list of rows
};
template <class Key>
using KeyedList = std::vector<Keyed<Key>>;

// Keys of texts or bytes, each text of a dictionary once.
struct RunKeys {
    struct Use {
        std::uint32_t at = 0;
        std::uint32_t key = 0;
    };
    std::string arena;
    std::vector<std::size_t> ends{0};
    std::vector<Use> uses;
    std::vector<std::uint32_t> ranks; // of each key, at last

    std::uint32_t add(std::string_view key) {
        arena.append(key);
        ends.push_back(arena.size());
        return static_cast<std::uint32_t>(ends.size() - 2);
    }
    std::size_t size() const { return ends.size() - 1; }
    std::string_view key(std::size_t i) const {
        return std::string_view(arena).substr(ends[i], ends[i + 1] - ends[i]);
    }
};

// What a key is compared by: its first eight bytes, then all.
struct RunKey {
    std::uint64_t beginning = 0;
    std::string_view key;
    std::uint32_t piece = 0;
    std::uint32_t number = 0;

    bool operator==(const RunKey& other) const {
        return beginning == other.beginning && key == other.key;
    }
    bool operator<(const RunKey& other) const {
        return beginning != other.beginning ? beginning < other.beginning : key < other.key;
    }
};

std::uint64_t beginningOf(std::string_view key) {
    std::uint64_t found = 0;
    for (std::size_t i = 0; i < 8; ++i)
        found = found << 8U | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return found;
}

// Rows of one group, and the keys of their values by kind.
struct Piece {
    const Segment* segment = nullptr;
    RowNumber firstRow = 0; // of the group
    std::uint32_t begin = 0;
    std::uint32_t end = 0; // in the list of rows
    KeyedList<std::uint64_t> numbers;
    KeyedList<NumberKey> exact; // instead of numbers, where they are of several forms
    KeyedList<std::uint64_t> dates;
    RunKeys texts;
    RunKeys bytes;
    std::vector<std::uint32_t> others;
};

std::vector<Piece> piecesOf(const ColumnStore& store, int column, std::span<const RowNumber> rows) {
    std::vector<Piece> pieces;
    for (std::size_t at = 0; at < rows.size();) {
        const auto place = store.find(rows[at]);
        const RowNumber first = rows[at] - place.row;
        const auto behind = std::lower_bound(rows.begin() + static_cast<std::ptrdiff_t>(at),
                                             rows.end(), first + place.group->rows());
        const auto end =
            std::min(static_cast<std::size_t>(behind - rows.begin()), at + itemsAPiece);
        Piece& piece = pieces.emplace_back();
        piece.segment = &place.group->segment(column);
        piece.firstRow = first;
        piece.begin = static_cast<std::uint32_t>(at);
        piece.end = static_cast<std::uint32_t>(end);
        at = end;
    }
    return pieces;
}

std::optional<NumberForm> formOf(const Segment& segment) {
    for (const Exceptional& each : segment.exceptions)
        if (cellKind(each.value) == CellKind::Number) return NumberForm{NumberForm::Kind::Exact};
    switch (segment.storage) {
    case Storage::Boolean:
    case Storage::Int32:
    case Storage::Int64:
        return NumberForm{NumberForm::Kind::Whole};
    case Storage::Double:
        return NumberForm{NumberForm::Kind::Real};
    case Storage::Scaled32:
    case Storage::Scaled:
        return NumberForm{NumberForm::Kind::Scaled, segment.scale};
    default:
        return std::nullopt;
    }
}

NumberForm formOf(const std::vector<Piece>& pieces) {
    std::optional<NumberForm> form;
    for (const Piece& piece : pieces) {
        const auto own = formOf(*piece.segment);
        if (own && form && *own != *form) return {NumberForm::Kind::Exact};
        if (own) form = own;
    }
    return form.value_or(NumberForm{});
}

// Makes the keys of one piece.
class Extraction {
  public:
    Extraction(Piece& piece, std::span<const RowNumber> rows, DataTypeEnum type, bool exact)
        : piece_(piece), segment_(*piece.segment), rows_(rows), single_(type == adSingle),
          exact_(exact), entries_(segment_.entries, none) {}

    void run() {
        auto exception = segment_.exceptions.begin();
        for (std::uint32_t at = piece_.begin; at < piece_.end; ++at) {
            const std::uint32_t row = rows_[at] - piece_.firstRow;
            if (segment_.isNull(row)) continue;
            while (exception != segment_.exceptions.end() && exception->row < row)
                ++exception;
            if (exception != segment_.exceptions.end() && exception->row == row)
                value(exception->value, at);
            else
                plain(row, at);
        }
    }

  private:
    void plain(std::uint32_t row, std::uint32_t at) {
        switch (segment_.storage) {
        case Storage::Boolean:
            return whole(segment_.values<std::uint8_t>()[row] != 0 ? -1 : 0, at);
        case Storage::Int32:
            return whole(segment_.values<std::int32_t>()[row], at);
        case Storage::Int64:
            return whole(segment_.values<std::int64_t>()[row], at);
        case Storage::Scaled32:
            return whole(segment_.values<std::int32_t>()[row], at, segment_.scale);
        case Storage::Scaled:
            return whole(segment_.values<std::int64_t>()[row], at, segment_.scale);
        case Storage::Double:
            return real(segment_.values<double>()[row], at);
        case Storage::Days:
            return date(segment_.values<std::int32_t>()[row], at);
        case Storage::Date:
            return date(segment_.values<double>()[row], at);
        case Storage::Text:
            return text(segment_.run(row), at);
        case Storage::Dictionary8:
            return entry(segment_.values<std::uint8_t>()[row], at);
        case Storage::Dictionary16:
            return entry(segment_.values<std::uint16_t>()[row], at);
        case Storage::Bytes:
            return use(piece_.bytes, piece_.bytes.add(segment_.run(row)), at);
        case Storage::Null:
        case Storage::Mixed:
            break;
        }
    }
    void value(const Variant& value, std::uint32_t at) {
        switch (cellKind(value)) {
        case CellKind::Null:
            return;
        case CellKind::Number:
            piece_.exact.push_back({numberKey(value), at});
            return;
        case CellKind::Date:
            return date(value.toDate().days, at);
        case CellKind::Text:
            return text(value.text(), at);
        case CellKind::Bytes: {
            const Bytes& bytes = value.bytes();
            const std::string key(bytes.begin(), bytes.end());
            return use(piece_.bytes, piece_.bytes.add(key), at);
        }
        case CellKind::Other:
            piece_.others.push_back(at);
        }
    }
    void whole(std::int64_t value, std::uint32_t at, unsigned scale = 0) {
        if (exact_)
            piece_.exact.push_back({numberKey(Decimal::fromScaled(value, scale)), at});
        else
            piece_.numbers.push_back({wholeKey(value), at});
    }
    void real(double value, std::uint32_t at) {
        if (single_) value = static_cast<float>(value);
        if (exact_)
            piece_.exact.push_back({numberKey(value), at});
        else
            piece_.numbers.push_back({realKey(value), at});
    }
    void date(double days, std::uint32_t at) { piece_.dates.push_back({realKey(days), at}); }
    void text(std::string_view text, std::uint32_t at) {
        use(piece_.texts, piece_.texts.add(collationKey(text)), at);
    }
    void entry(std::uint32_t number, std::uint32_t at) {
        std::uint32_t& known = entries_[number];
        if (known == none) known = piece_.texts.add(collationKey(segment_.run(number)));
        use(piece_.texts, known, at);
    }
    static void use(RunKeys& keys, std::uint32_t key, std::uint32_t at) {
        keys.uses.push_back({at, key});
    }

    Piece& piece_;
    const Segment& segment_;
    std::span<const RowNumber> rows_;
    bool single_;
    bool exact_;
    std::vector<std::uint32_t> entries_; // the key of each entry of the dictionary
};

// Numbers the keys of all pieces, kind after kind.
class Ranking {
  public:
    Ranking(std::vector<Piece>& pieces, std::size_t rows, unsigned threads)
        : pieces_(pieces), ranks_(rows), threads_(threads) {}

    Ranks run() {
        keyed(&Piece::numbers);
        keyed(&Piece::exact);
        keyed(&Piece::dates);
        runs(&Piece::texts);
        runs(&Piece::bytes);
        ++last_;
        for (const Piece& piece : pieces_)
            for (const std::uint32_t at : piece.others)
                ranks_[at] = last_;
        return std::move(ranks_);
    }

  private:
    template <class Key>
    void keyed(KeyedList<Key> Piece::*list) {
        std::vector<KeyedList<Key>> all;
        for (Piece& piece : pieces_)
            if (!(piece.*list).empty()) all.push_back(std::move(piece.*list));
        const auto sorted = sortRuns(
            std::move(all), [](const Keyed<Key>& a, const Keyed<Key>& b) { return a.key < b.key; },
            threads_);
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (i == 0 || !(sorted[i].key == sorted[i - 1].key)) ++last_;
            ranks_[sorted[i].at] = last_;
        }
    }
    void runs(RunKeys Piece::*list) {
        std::vector<std::vector<RunKey>> all(pieces_.size());
        runParallel(
            pieces_.size(),
            [&](std::size_t i) {
                RunKeys& keys = pieces_[i].*list;
                keys.ranks.resize(keys.size());
                all[i].reserve(keys.size());
                for (std::uint32_t k = 0; k < keys.size(); ++k)
                    all[i].push_back(
                        {beginningOf(keys.key(k)), keys.key(k), static_cast<std::uint32_t>(i), k});
            },
            threads_);
        const auto sorted = sortRuns(std::move(all), std::less<>(), threads_);
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (i == 0 || !(sorted[i] == sorted[i - 1])) ++last_;
            (pieces_[sorted[i].piece].*list).ranks[sorted[i].number] = last_;
        }
        runParallel(
            pieces_.size(),
            [&](std::size_t i) {
                const RunKeys& keys = pieces_[i].*list;
                for (const RunKeys::Use& use : keys.uses)
                    ranks_[use.at] = keys.ranks[use.key];
            },
            threads_);
    }

    std::vector<Piece>& pieces_;
    Ranks ranks_;
    std::uint32_t last_ = 0;
    unsigned threads_;
};

} // namespace

Ranks rankRows(const ColumnStore& store, int column, std::span<const RowNumber> rows,
               unsigned threads) {
    auto pieces = piecesOf(store, column, rows);
    const bool exact = formOf(pieces).kind == NumberForm::Kind::Exact;
    const DataTypeEnum type = store.columns()[static_cast<std::size_t>(column)].type;
    runParallel(
        pieces.size(), [&](std::size_t i) { Extraction(pieces[i], rows, type, exact).run(); },
        threads);
    return Ranking(pieces, rows.size(), threads).run();
}

std::shared_ptr<const Ranks> KeptRanks::reaching(std::size_t rows) const {
    const std::scoped_lock lock(mutex_);
    return ranks_ && ranks_->size() >= rows ? ranks_ : nullptr;
}

std::size_t KeptRanks::bytes() const {
    const std::scoped_lock lock(mutex_);
    return ranks_ ? ranks_->capacity() * sizeof(std::uint32_t) : 0;
}

std::shared_ptr<const Ranks> KeptRanks::extended(const ColumnStore& store, int column,
                                                 std::size_t rows, unsigned threads) {
    const std::scoped_lock one(computing_);
    if (auto there = reaching(rows)) return there;
    RowList all(static_cast<std::size_t>(store.rows()));
    std::iota(all.begin(), all.end(), RowNumber{0});
    auto made = std::make_shared<const Ranks>(rankRows(store, column, all, threads));
    const std::scoped_lock lock(mutex_);
    ranks_ = made;
    return made;
}

} // namespace norvel::adodb
