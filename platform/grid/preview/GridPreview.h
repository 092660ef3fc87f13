// The preview of what a grid shows.
#pragma once

namespace norvel::grid {

class Grid;
class PrintInfo;

// See PrintInfo::PrintPreview.
void openPreview(Grid& grid, PrintInfo& info);

} // namespace norvel::grid
