#include "output/StileGriglia.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Variant.h"

#include <cstdint>
#include <limits>

namespace norvel::output {

namespace {

// The largest size, in points, that a layout file keeps.
constexpr double dimensioneMassima = 1000;

// A font as the system knows it holds a size above zero.
double dimensioneValida(double punti) {
    if (!(punti > 0) || punti > dimensioneMassima)
        throw Errore(380, "Valore di proprietà non valido");
    return punti;
}

// Colours of 32 bits, with or without the sign that a Long gives them.
std::uint32_t coloreDaTesto(const std::string& testo) {
    const double valore = Variant(testo).toDouble();
    const std::int64_t intero = Variant(valore).toI8();
    if (static_cast<double>(intero) != valore ||
        intero < std::numeric_limits<std::int32_t>::min() ||
        intero > std::numeric_limits<std::uint32_t>::max())
        throw erroreTipoNonCorrispondente();
    return static_cast<std::uint32_t>(intero);
}

std::string testoColore(const grid::Style& stile) {
    return std::to_string(static_cast<std::int32_t>(stile.BackColor));
}

} // namespace

void impostaChekBox(const ParteStile& griglia, bool attivo) {
    for (int i = 0; i < griglia.colonne.Count(); ++i) {
        if (griglia.codiceTipo(i) != codiceSiNo) continue;
        grid::ValueItems& valori = griglia.colonne.Item(i).ValueItems;
        valori.Translate = attivo;
        valori.Presentation = attivo ? grid::presentationCheckBox : grid::presentationNormal;
    }
}

void impostaRidimensionaColonne(const ParteStile& griglia, bool attivo) {
    griglia.split.AllowSizing = attivo;
}

void impostaRidimensionaRighe(const ParteStile& griglia, bool attivo) {
    griglia.split.AllowRowSizing = attivo;
}

void impostaSpostaColonne(const ParteStile& griglia, bool attivo) {
    griglia.split.AllowColMove = attivo;
}

void impostaLetturaFacilitata(const ParteStile& griglia, bool attivo) {
    griglia.split.AlternatingRowStyle = attivo;
}

void impostaEvidenziaRiga(const ParteStile& griglia, bool attivo) {
    griglia.stile.MarqueeStyle = attivo ? grid::marqueeRow : grid::marqueeCell;
}

void impostaRaggruppamento(const ParteStile& griglia, bool attivo) {
    griglia.stile.DataView = attivo ? vistaRaggruppata : vistaNormale;
    griglia.split.AllowColMove = attivo;
}

void impostaDimensioneCarattere(const ParteStile& griglia, const std::string& testo) {
    griglia.stile.Font.Size = dimensioneValida(Variant(testo).toDouble());
}

void impostaCarattere(const ParteStile& griglia, const grid::FontStyle& scelto) {
    grid::FontStyle& carattere = griglia.stile.Font;
    carattere.Bold = scelto.Bold;
    carattere.Name = scelto.Name;
    carattere.Size = dimensioneValida(static_cast<float>(scelto.Size));
    carattere.Italic = scelto.Italic;
}

void impostaColorePari(const ParteStile& griglia, const std::string& testo) {
    griglia.split.EvenRowStyle.BackColor = coloreDaTesto(testo);
}

void impostaColoreDispari(const ParteStile& griglia, const std::string& testo) {
    griglia.split.OddRowStyle.BackColor = coloreDaTesto(testo);
}

ControlliStile leggiStile(const ParteStile& griglia) {
    ControlliStile controlli;
    controlli.coloreDispari = testoColore(griglia.split.OddRowStyle);
    controlli.colorePari = testoColore(griglia.split.EvenRowStyle);
    controlli.facilitato = griglia.split.AlternatingRowStyle;
    controlli.sposta = griglia.split.AllowColMove;
    controlli.colonne = griglia.split.AllowSizing;
    controlli.righe = griglia.split.AllowRowSizing;
    controlli.evidenzia = griglia.stile.MarqueeStyle == grid::marqueeRow;
    return controlli;
}

} // namespace norvel::output
