#include "views/EditorColonne.h"

namespace norvel::views {

ListaVoci::~ListaVoci() = default;

void CaricaColonne(const grid::Columns& colonne, ListaVoci& visibili, ListaVoci& nascoste) {
    visibili.Clear();
    nascoste.Clear();
    for (int i = 0; i < colonne.Count(); ++i) {
        const grid::Column& colonna = colonne.Item(i);
        (colonna.Visible ? visibili : nascoste).AddItem(colonna.Caption, i);
    }
}

void spostaScelta(ListaVoci& da, ListaVoci& a, grid::Columns& colonne, bool visibile) {
    const int scelta = da.ListIndex();
    if (scelta < 0) return;
    const int colonna = da.ItemData(scelta);
    a.AddItem(da.List(scelta), colonna);
    da.RemoveItem(scelta);
    colonne.Item(colonna).Visible = visibile;
    if (da.ListCount() > 0) da.SetListIndex(scelta < da.ListCount() ? scelta : 0);
}

void spostaTutte(ListaVoci& da, ListaVoci& a, grid::Columns& colonne, bool visibile) {
    for (int volte = da.ListCount(); volte > 0; --volte) {
        da.SetListIndex(0);
        spostaScelta(da, a, colonne, visibile);
    }
}

} // namespace norvel::views
