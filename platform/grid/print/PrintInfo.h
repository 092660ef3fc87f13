// What a print of the grid looks like, beside what the grid itself looks like. Geometry in twips.
#pragma once

#include "platform/grid/model/Model.h"

#include <functional>
#include <string>
#include <utility>

namespace norvel::grid {

enum class PageOrientation { Portrait, Landscape };

// Upright: Width is the shorter side of the usual papers.
struct PaperSize {
    double Width = 11906, Height = 16838; // A4
    bool operator==(const PaperSize&) const = default;
};

struct PageMargins {
    double Left = 850, Top = 850, Right = 850, Bottom = 850; // 15 mm
    bool operator==(const PageMargins&) const = default;
};

struct PrintSettings {
    // Texts with the codes of PageCodes.h. An empty one takes no room.
    std::string PageHeader, PageFooter;
    FontStyle PageHeaderFont, PageFooterFont; // what they leave open is the grid's
    // On every page; otherwise on the first page of each group of columns alone.
    bool RepeatHeadings = true;
    std::string PreviewCaption = "Anteprima di stampa";
    std::string PreviewCounter = "Page \\p of \\P";
    PaperSize Paper;
    PageMargins Margins;
    PageOrientation Orientation = PageOrientation::Portrait;
    bool operator==(const PrintSettings&) const = default;
};

// The settings of one grid and the preview from which an operator prints. The settings last as long
// as the grid; the orientation is what the operator chose last.
class PrintInfo : public PrintSettings {
  public:
    explicit PrintInfo(std::function<void(PrintInfo&)> openPreview)
        : openPreview_(std::move(openPreview)) {}
    // Opens the preview and returns once it is closed. Where there is no printer it does not open.
    // Raises what the recordset raises, also the error of a fetch that broke off.
    void PrintPreview() { openPreview_(*this); }

  private:
    std::function<void(PrintInfo&)> openPreview_;
};

} // namespace norvel::grid
