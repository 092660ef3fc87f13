// The preview of what a grid shows.
#pragma once

namespace norvel::grid {

class Grid;
class PrintInfo;

// See PrintInfo::PrintPreview.
void openPreview(Grid& grid, PrintInfo& info);
// The same whether or not there is a printer.
void showPreview(Grid& grid, PrintInfo& info);

} // namespace norvel::grid
