#include "platform/adodb/fetch/Fetch.h"

#include <limits>
#include <utility>

namespace norvel::adodb {

namespace {

// The kinds of values seen in one column.
struct Seen {
    bool integer = false;
    bool wide = false; // an integer of more than 32 bits
    bool real = false;
    bool date = false;
    bool text = false;
    bool bytes = false;

    void add(RawKind kind, RawValue value) {
        switch (kind) {
        case RawKind::Integer:
            integer = true;
            wide = wide || value.integer < std::numeric_limits<std::int32_t>::min() ||
                   value.integer > std::numeric_limits<std::int32_t>::max();
            break;
        case RawKind::Real:
            real = true;
            break;
        case RawKind::Date:
            date = true;
            break;
        case RawKind::Text:
        case RawKind::LongText:
            text = true;
            break;
        case RawKind::Bytes:
        case RawKind::LongBytes:
            bytes = true;
            break;
        case RawKind::Null:
            break;
        }
    }

    DataTypeEnum type() const {
        const int kinds = int{integer || real} + int{date} + int{text} + int{bytes};
        if (kinds > 1) return adVariant;
        if (real) return adDouble;
        if (integer) return wide ? adBigInt : adInteger;
        if (date) return adDate;
        if (bytes) return adLongVarBinary;
        return adVarWChar;
    }
};

} // namespace

void settleTypes(std::vector<ColumnInfo>& columns, const Batch& batch) {
    for (std::size_t c = 0; c < columns.size(); ++c) {
        if (columns[c].type != adEmpty) continue;
        Seen seen;
        const int column = static_cast<int>(c);
        for (std::uint32_t row = 0; row < batch.ready(); ++row)
            seen.add(batch.kinds(column)[row], batch.values(column)[row]);
        ColumnInfo settled = describeColumn(columns[c].name, seen.type());
        settled.attributes |= columns[c].attributes;
        settled.origin = columns[c].origin;
        columns[c] = std::move(settled);
    }
}

} // namespace norvel::adodb
