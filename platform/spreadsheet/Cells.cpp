#include "platform/spreadsheet/Cells.h"

namespace norvel::spreadsheet {

CellReader::~CellReader() = default;
CellSource::~CellSource() = default;

} // namespace norvel::spreadsheet
