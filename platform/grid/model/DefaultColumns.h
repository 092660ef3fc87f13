// The columns a grid makes for itself when no layout was loaded.
#pragma once

#include "platform/grid/model/Model.h"
#include "platform/grid/model/RowCache.h"
#include "platform/grid/model/RowReader.h"

#include <functional>
#include <string_view>

namespace norvel::grid {

// The width of a text in the grid's font, twips.
using MeasureText = std::function<double(std::string_view)>;

// How many of the first rows decide a column's width.
inline constexpr adodb::RowCount sampledRows = 32;

// One column per field: caption = field name, no filter combo, the field's type, and a width from
// the caption, the type and the cells of the first rows and the last one (which stay in the cache).
// margin: what a cell adds to its text, twips.
NR_API Columns defaultColumns(adodb::Fields& fields, RowReader& rows, RowCache& cache,
                              const MeasureText& measure, double margin);

// The width, in twips, that shows caption (with an arrow) and texts whole, within what one column
// may take by itself.
NR_API double fittingWidth(std::string_view caption, const std::vector<std::string>& texts,
                           const MeasureText& measure, double margin);

} // namespace norvel::grid
