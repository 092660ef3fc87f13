#include "views/ListaFinestra.h"

#include "platform/controls/WxText.h"
#include "platform/runtime/Errore.h"

#include <wx/listbox.h>

namespace norvel::views {

unsigned ListaFinestra::posto(int indice) const {
    if (indice < 0 || indice >= ListCount()) throw erroreArgomento();
    return static_cast<unsigned>(indice);
}

int ListaFinestra::ListCount() const {
    return static_cast<int>(lista_.GetCount());
}

std::string ListaFinestra::List(int indice) const {
    return controls::fromWx(lista_.GetString(posto(indice)));
}

int ListaFinestra::ItemData(int indice) const {
    return dati_[posto(indice)];
}

int ListaFinestra::ListIndex() const {
    return lista_.GetSelection();
}

void ListaFinestra::SetListIndex(int indice) {
    const auto voce = static_cast<int>(posto(indice));
    lista_.SetSelection(voce);
    lista_.EnsureVisible(voce);
}

void ListaFinestra::AddItem(const std::string& testo, int dato) {
    lista_.Append(controls::toWx(testo));
    dati_.push_back(dato);
}

// A selection elsewhere stays; that of the entry goes with it.
void ListaFinestra::RemoveItem(int indice) {
    const unsigned voce = posto(indice);
    const bool scelta = lista_.GetSelection() == indice;
    lista_.Delete(voce);
    dati_.erase(dati_.begin() + indice);
    if (scelta) lista_.SetSelection(wxNOT_FOUND);
}

void ListaFinestra::Clear() {
    lista_.Clear();
    dati_.clear();
}

} // namespace norvel::views
