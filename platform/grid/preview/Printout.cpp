#include "platform/grid/preview/Printout.h"

#include "platform/controls/WxText.h"
#include "platform/runtime/ErroreInCorso.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace norvel::grid {

Printout::Printout(const std::string& title, PrintJob job, PagePainter& painter)
    : wxPrintout(controls::toWx(title)), job_(std::move(job)), painter_(painter) {}

int Printout::Pages() const {
    return static_cast<int>(
        std::min<adodb::RowCount>(job_.PageCount(), std::numeric_limits<int>::max()));
}

// A printer's paper is a few twips off, for it counts in its own dots.
void Printout::OnPreparePrinting() {
    int across = 0;
    int down = 0;
    GetPPIPrinter(&across, &down);
    const wxRect pixels = GetPaperRectPixels();
    if (across <= 0 || down <= 0 || pixels.IsEmpty()) return;
    PaperSize paper{pixels.width * 1440.0 / across, pixels.height * 1440.0 / down};
    const PaperSize shown = job_.Layout().Paper();
    constexpr double near = 30;
    if (std::abs(paper.Width - shown.Width) < near && std::abs(paper.Height - shown.Height) < near)
        return;
    const bool lies = paper.Width > paper.Height;
    if (lies) std::swap(paper.Width, paper.Height);
    job_.SetPaper(paper, lies ? PageOrientation::Landscape : PageOrientation::Portrait);
}

void Printout::GetPageInfo(int* first, int* last, int* from, int* to) {
    *first = *from = 1;
    *last = *to = Pages();
}

bool Printout::HasPage(int page) {
    return page >= 1 && page <= Pages() && !error_;
}

bool Printout::OnPrintPage(int page) {
    if (error_) return false;
    try {
        if (OnPage && !OnPage(page, Pages())) return false;
        painter_.PaintOnPaper(*this, job_.Page(page));
        return true;
    } catch (...) { // the system's printing, which calls this, lets nothing pass
        error_ = erroreInCorso();
        return false;
    }
}

} // namespace norvel::grid
