#include "tests/platform/adodb/FilterMixture.h"

#include "platform/adodb/store/SegmentBuilder.h"
#include "platform/runtime/Text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace norvel::adodb {

namespace {

const Variant null = Variant::null();

} // namespace

const std::vector<std::string>& oddPieces() {
    static const std::vector<std::string> pieces{
        "a",    "A",    "à",          "À",       "a\u0300", "A\u0300", "\u0300", "\u0316", "b",
        "s",    "S",    "ſ",          "ß",       "ẞ",       "ss",      "İ",      "ı",      "i",
        "I",    "Σ",    "σ",          "ς",       "Ⱥ",       "é",       "E",      "\u0301", "€",
        "K",    "k",    "'",          " ",       "0",       "[",       "\xC3",   "\xA9",   "\x80",
        "\xE2", "\xCC", "\U00010400", "J\u030C", "ǰ",       "가",      "\u1100", "\u1161"};
    return pieces;
}

std::string inQuotes(const std::string& text) {
    return "'" + replaceText(text, "'", "''") + "'";
}

std::shared_ptr<const FilterProgram> compiled(const ColumnStore& store, const std::string& filter) {
    return FilterProgram::compile(parseFilter(filter), store.columns());
}

Mixture::Mixture(unsigned seed) : random(seed) {
    auto columns =
        std::vector{describeColumn("intero", adInteger),   describeColumn("grande", adBigInt),
                    describeColumn("piccolo", adSmallInt), describeColumn("doppio", adDouble),
                    describeColumn("singolo", adSingle),   describeColumn("valuta", adCurrency),
                    describeColumn("decimale", adDecimal), describeColumn("data", adDate),
                    describeColumn("ora", adDBTimeStamp),  describeColumn("logico", adBoolean),
                    describeColumn("testo", adVarWChar),   describeColumn("sigla", adVarWChar),
                    describeColumn("vario", adVariant)};
    store = std::make_shared<ColumnStore>(std::move(columns));
    for (int group = 0; group < 4; ++group)
        addGroup(150 + random() % 200, group);
}

void Mixture::addGroup(std::size_t rows, int group) {
    std::vector<SegmentBuilder> builders;
    for (const ColumnInfo& column : store->columns())
        builders.emplace_back(column.type);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t i = 0; i < builders.size(); ++i)
            builders[i].append(value(static_cast<int>(i), group));
    std::size_t bytes = 0;
    std::vector<std::size_t> at;
    for (SegmentBuilder& builder : builders) {
        at.push_back(bytes);
        bytes += builder.prepare();
    }
    Slab slab(std::max<std::size_t>(bytes, 64));
    std::vector<Segment> segments;
    for (std::size_t i = 0; i < builders.size(); ++i)
        segments.push_back(builders[i].finish(slab.data() + at[i]));
    auto made = std::make_unique<RowGroup>(static_cast<std::uint32_t>(rows), std::move(slab),
                                           std::move(segments));
    groups.push_back(made.get());
    store->publish(std::move(made));
}

Variant Mixture::value(int column, int group) {
    if (group % 2 == 0 && random() % 7 == 0) return null;
    if (group >= 2 && random() % 15 == 0) return odd();
    const auto number = static_cast<std::int32_t>(random() % 21) - 10;
    switch (column) {
    case 0:
        return group == 3 && random() % 8 == 0 ? std::numeric_limits<std::int32_t>::max() : number;
    case 1:
        return wide(number);
    case 2:
        return static_cast<std::int16_t>(number);
    case 3:
        return real(number);
    case 4:
        return static_cast<float>(number) / 10.0F;
    case 5:
        return Currency{std::int64_t{number} * (group == 1 ? 123'456'789'012 : 2500)};
    case 6:
        return Decimal::fromScaled(std::int64_t{number} * 25, 1 + random() % 4);
    case 7:
        return Date{40'000.0 + number};
    case 8:
        return Date{40'000.0 + number / 4.0};
    case 9:
        return random() % 2 == 0;
    case 10:
        return std::string(oddPieces()[random() % 12]) + oddPieces()[random() % 12] +
               std::to_string(number);
    case 11:
        return std::string(oddPieces()[random() % 5]) + (number > 0 ? "x" : "");
    default:
        return odd();
    }
}

Variant Mixture::wide(std::int32_t number) {
    constexpr std::int64_t edges[] = {std::numeric_limits<std::int64_t>::max(),
                                      std::numeric_limits<std::int64_t>::min(), 9007199254740992,
                                      9007199254740993, 2147483648};
    return random() % 4 == 0 ? Variant(edges[random() % 5]) : Variant(std::int64_t{number});
}

Variant Mixture::real(std::int32_t number) {
    const double edges[] = {-0.0, std::nan(""), INFINITY, 1e300, 0.1, 5e-324};
    return random() % 5 == 0 ? edges[random() % 6] : number / 2.0;
}

Variant Mixture::odd() {
    switch (random() % 8) {
    case 0:
        return "ross";
    case 1:
        return Decimal::fromScaled(55, 1);
    case 2:
        return std::int64_t{3};
    case 3:
        return Date{40'001};
    case 4:
        return true;
    case 5:
        return 2.5;
    case 6:
        return Bytes{1};
    default:
        return "À 2";
    }
}

std::string Mixture::literal() {
    constexpr const char* numbers[] = {"0",
                                       "-1",
                                       "3",
                                       "2.5",
                                       "-2.5",
                                       "0.1",
                                       "-0.1",
                                       "1e-400",
                                       "-1e-400",
                                       "3.0000000000000000000001",
                                       "1e25",
                                       "-1e25",
                                       "1e300",
                                       "9223372036854775807",
                                       "9223372036854775808",
                                       "-9223372036854775808",
                                       "-9223372036854775809",
                                       "9007199254740993",
                                       "2147483647",
                                       "2147483647.5",
                                       "40001",
                                       "40000.25",
                                       "7.9e28",
                                       "0.30864197253",
                                       "123456.789",
                                       "1e-28",
                                       "True",
                                       "False",
                                       "5e-324"};
    return numbers[random() % std::size(numbers)];
}

std::string Mixture::clause() {
    constexpr const char* ops[] = {"=", "<>", "<", "<=", ">", ">="};
    const auto& columns = store->columns();
    const std::size_t column = random() % columns.size();
    const std::string& name = columns[column].name;
    const bool boolean = columns[column].type == adBoolean;
    const std::string op = ops[random() % (boolean ? 2 : 6)];
    const std::string needle =
        random() % 2 == 0 ? oddPieces()[random() % 30] : std::to_string(random() % 12);
    switch (random() % 6) {
    case 0:
        return name + (random() % 2 == 0 ? "=NULL" : "<>NULL");
    case 1:
        return name + " LIKE " + inQuotes("*" + needle + "*");
    case 2:
        return name + " LIKE " + inQuotes(needle + "*");
    case 3:
        return name + ops[random() % 2] + inQuotes(needle);
    case 4:
        if (columns[column].type == adDate || columns[column].type == adDBTimeStamp)
            return name + op + "#2009-07-0" + std::to_string(1 + random() % 9) + "#";
        [[fallthrough]];
    default:
        return name + op + literal();
    }
}

} // namespace norvel::adodb
