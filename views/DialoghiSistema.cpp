#include "views/DialoghiSistema.h"

#include "platform/controls/ToolkitThread.h"
#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"

#include <wx/colordlg.h>
#include <wx/fontdlg.h>

#include <cmath>
#include <utility>

namespace norvel::views {

namespace {

constexpr int annullato = 32755;
constexpr std::uint32_t soloColore = 0x00FFFFFF;

std::optional<std::uint32_t> chiediColore(wxWindow& su, std::uint32_t presente) {
    const controls::InUse occupato;
    wxColourData dati;
    dati.SetChooseFull(true);
    dati.SetColour(wxColour(static_cast<unsigned long>(presente & soloColore)));
    wxColourDialog dialogo(&su, &dati);
    dialogo.SetTitle(wxString::FromUTF8("Scelta del colore"));
    if (dialogo.ShowModal() != wxID_OK) return std::nullopt;
    return dialogo.GetColourData().GetColour().GetRGB();
}

wxFont daStile(wxFont carattere, const grid::FontStyle& stile) {
    if (!stile.Name.empty()) carattere.SetFaceName(controls::toWx(stile.Name));
    if (stile.Size > 0) carattere.SetFractionalPointSize(stile.Size);
    carattere.SetWeight(stile.Bold ? wxFONTWEIGHT_BOLD : wxFONTWEIGHT_NORMAL);
    carattere.SetStyle(stile.Italic ? wxFONTSTYLE_ITALIC : wxFONTSTYLE_NORMAL);
    return carattere;
}

std::optional<grid::FontStyle> chiediCarattere(wxWindow& su, const grid::FontStyle& presente) {
    const controls::InUse occupato;
    wxFontData dati;
    dati.EnableEffects(false);
    dati.SetInitialFont(daStile(su.GetFont(), presente));
    wxFontDialog dialogo(&su, dati);
    dialogo.SetTitle(wxString::FromUTF8("Scelta del carattere"));
    if (dialogo.ShowModal() != wxID_OK) return std::nullopt;
    const wxFont scelto = dialogo.GetFontData().GetChosenFont();
    return grid::FontStyle{controls::fromWx(scelto.GetFaceName()), scelto.GetFractionalPointSize(),
                           scelto.GetWeight() > wxFONTWEIGHT_MEDIUM,
                           scelto.GetStyle() != wxFONTSTYLE_NORMAL};
}

DialoghiSistema& dialoghi() {
    static DialoghiSistema presenti{chiediColore, chiediCarattere};
    return presenti;
}

template <class Scelta>
Scelta oErrore(std::optional<Scelta> scelta) {
    if (!scelta) throw Errore(annullato, "È stato scelto Annulla");
    return std::move(*scelta);
}

} // namespace

DialoghiSistema impostaDialoghi(DialoghiSistema nuovi) {
    return std::exchange(dialoghi(), std::move(nuovi));
}

std::uint32_t scegliColore(wxWindow& su, std::uint32_t presente) {
    return oErrore(dialoghi().colore(su, presente));
}

grid::FontStyle scegliCarattere(wxWindow& su, const grid::FontStyle& presente) {
    return oErrore(dialoghi().carattere(su, presente));
}

} // namespace norvel::views
