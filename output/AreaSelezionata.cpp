#include "output/AreaSelezionata.h"

#include <algorithm>
#include <limits>

namespace norvel::output {

namespace {

constexpr const char* fineRiga = "\r\n";
constexpr adodb::RowCount righePerPasso = 500;

} // namespace

std::string testoValore(const Variant& valore) {
    return valore.isNull() ? std::string() : valore.toText();
}

TestoArea::TestoArea(const grid::Columns& colonne, const AreaSelezionata& area,
                     adodb::Recordset& recordset, FormaTesto forma)
    : area_(area), forma_(forma), clone_(recordset.Clone()), righe_(area.righe()) {
    mappa_.reserve(static_cast<std::size_t>(colonne.Count()));
    for (int i = 0; i < colonne.Count(); ++i)
        mappa_.push_back(colonne.Item(i).DataField);
    scegliColonne(colonne);
    if (forma_ == FormaTesto::Excel)
        for (const int colonna : scelte_)
            testo_ += mappa_[static_cast<std::size_t>(colonna)] + '\t';
    testo_ += fineRiga;
}

// Only what is not on show.
void TestoArea::scegliColonne(const grid::Columns& colonne) {
    for (int i = std::max(0, area_.prima); i <= area_.ultima; ++i) {
        if (colonne.Item(i).Visible) continue;
        if (forma_ == FormaTesto::Excel) {
            if (contate_ == std::numeric_limits<std::int16_t>::max()) throw erroreOverflow();
            ++contate_;
        }
        scelte_.push_back(i);
    }
}

bool TestoArea::passo() {
    if (campi_.empty() && righe_ > 0)
        for (const int colonna : scelte_)
            campi_.push_back(&clone_->Fields()(mappa_[static_cast<std::size_t>(colonna)]));
    const adodb::RowCount fine = std::min(righe_, prossima_ + righePerPasso);
    for (; prossima_ < fine; ++prossima_)
        riga(prossima_);
    return prossima_ < righe_;
}

void TestoArea::riga(adodb::RowCount indice) {
    clone_->SetBookmark(area_.bookmark(indice));
    for (const adodb::Field* campo : campi_) {
        testo_ += testoValore(campo->Value());
        testo_ += forma_ == FormaTesto::Excel ? '\t' : ' ';
    }
    testo_ += fineRiga;
}

double TestoArea::fatto() const {
    return righe_ == 0 ? 1 : static_cast<double>(prossima_) / static_cast<double>(righe_);
}

} // namespace norvel::output
