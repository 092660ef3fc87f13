#include "platform/grid/export/ColumnEncoder.h"

#include "platform/grid/export/NumberBytes.h"
#include "platform/grid/model/CellText.h"

#include <cstring>

namespace norvel::grid {

using namespace adodb;

void appendBytes(GrowingBytes& out, std::string_view bytes) {
    if (!bytes.empty()) std::memcpy(out.extend(bytes.size()), bytes.data(), bytes.size());
}

ColumnEncoder::ColumnEncoder(const ColumnStore& store, const std::vector<int>& fields,
                             const Markup& markup)
    : store_(store), markup_(markup) {
    columns_.reserve(fields.size());
    for (const int field : fields)
        columns_.push_back(
            {field, field < 0 ? adEmpty : store.columns()[static_cast<std::size_t>(field)].type});
}

std::size_t ColumnEncoder::encode(std::span<const RowNumber> rows, std::size_t limit,
                                  GrowingBytes& out) const {
    const RowGroup* group = nullptr;
    std::int64_t first = 0; // row of the group
    std::size_t done = 0;
    while (done < rows.size() && (done == 0 || out.size() <= limit)) {
        const std::int64_t number = rows[done++];
        if (!group || number < first || number >= first + group->rows()) {
            const ColumnStore::Place place = store_.find(number);
            group = place.group;
            first = number - place.row;
        }
        const auto row = static_cast<std::uint32_t>(number - first);
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            appendBytes(out, markup_.before[c]);
            if (columns_[c].field >= 0)
                encodeValue(group->segment(columns_[c].field), row, columns_[c].type, out);
        }
        appendBytes(out, markup_.rowEnd);
    }
    return done;
}

void ColumnEncoder::encodeValue(const Segment& segment, std::uint32_t row, DataTypeEnum type,
                                GrowingBytes& out) const {
    if (segment.isNull(row)) return;
    if (segment.exception(row) == nullptr) {
        switch (segment.storage) {
        case Storage::Boolean:
            return appendBytes(out, segment.values<std::uint8_t>()[row] != 0 ? "True" : "False");
        case Storage::Int32:
            return appendInteger(out, segment.values<std::int32_t>()[row]);
        case Storage::Int64:
            return appendInteger(out, segment.values<std::int64_t>()[row]);
        case Storage::Double:
            if (type == adSingle) break;
            return appendDouble(out, segment.values<double>()[row]);
        case Storage::Days:
            return appendDays(out, segment.values<std::int32_t>()[row]);
        case Storage::Scaled32:
            return appendScaled(out, segment.values<std::int32_t>()[row], segment.scale);
        case Storage::Scaled:
            return appendScaled(out, segment.values<std::int64_t>()[row], segment.scale);
        case Storage::Text:
        case Storage::Dictionary8:
        case Storage::Dictionary16:
            return appendText(out, segment.text(row), markup_.html);
        default:
            break;
        }
    }
    appendText(out, wholeCellText(segment.value(row, type)), markup_.html);
}

} // namespace norvel::grid
