#include "search_window/FiltroBarra.h"

#include "query/VerificaCella.h"

#include <algorithm>

namespace norvel::search_window {

bool contienePiuValori(const std::vector<query::ColonnaFiltro>& colonne) {
    return std::ranges::any_of(colonne, [](const query::ColonnaFiltro& colonna) {
        return colonna.valore.find(query::separatoreValori) != std::string::npos;
    });
}

FiltroBarra valutaBarra(const std::vector<query::ColonnaFiltro>& colonne,
                        const query::TipoDiCampo& tipo, query::Confronto confronto, bool multiplo) {
    FiltroBarra barra;
    bool tutteBuone = true;
    for (const query::ColonnaFiltro& colonna : colonne) {
        const auto motivo = query::verificaCella(colonna, tipo, confronto, multiplo);
        barra.motivi.push_back(motivo.value_or(""));
        tutteBuone = tutteBuone && !motivo;
    }
    if (!tutteBuone) return barra;
    if (multiplo) {
        query::FiltroComposto composto = query::componiFiltroMultiplo(colonne, tipo, confronto);
        barra.rifiuto = composto.rifiuto;
        barra.testo = composto.testo;
    } else {
        barra.testo = query::componiFiltro(colonne, tipo, confronto);
    }
    barra.valido = barra.rifiuto.empty();
    return barra;
}

} // namespace norvel::search_window
