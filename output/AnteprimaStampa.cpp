#include "output/AnteprimaStampa.h"

namespace norvel::output {

void impostaStampa(grid::PrintInfo& stampa, const std::string& caption) {
    stampa.PageHeaderFont.Italic = true;
    stampa.PageHeader = caption;
    stampa.RepeatHeadings = true;
    stampa.PageFooter = "\\tPage: \\p";
}

void anteprimaStampa(grid::PrintInfo& stampa, const std::string& caption) {
    try {
        impostaStampa(stampa, caption);
        stampa.PrintPreview();
    } catch (...) {
        return; // the preview did not open, or has closed
    }
}

} // namespace norvel::output
