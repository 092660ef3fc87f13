#include "query/Ordinamento.h"

#include "platform/runtime/Errore.h"

namespace norvel::query {

namespace {

// A step whose failure stops nothing.
template <typename Passo>
void prova(const Passo& passo) {
    try {
        passo();
    } catch (const Errore&) {
        // the steps behind it are tried all the same
        return;
    }
}

} // namespace

Intestazioni::~Intestazioni() = default;

void togliFrecce(Intestazioni& intestazioni) {
    int colonne = 0;
    prova([&] { colonne = intestazioni.numero(); });
    for (int i = 0; i < colonne; ++i) {
        prova([&] {
            if (intestazioni.posizioneImmagine(i) == posizioneFreccia)
                intestazioni.impostaPosizioneImmagine(i, posizioneVuota);
        });
    }
}

std::string testoOrdine(const std::string& campo, bool crescente) {
    return "[" + campo + "] " + (crescente ? " asc" : " desc");
}

void ordinaPerColonna(Intestazioni& intestazioni, int colonna, bool& crescente,
                      const std::string& percorso) {
    togliFrecce(intestazioni);
    crescente = !crescente;
    std::string ordine = crescente ? " asc" : " desc"; // all there is where no field is
    prova([&] { ordine = testoOrdine(intestazioni.campo(colonna), crescente); });
    const std::string immagine = percorso + (crescente ? frecciaSu : frecciaGiu);
    prova([&] { intestazioni.impostaImmagine(colonna, immagine); });
    prova([&] { intestazioni.impostaPosizioneImmagine(colonna, posizioneFreccia); });
    prova([&] { intestazioni.impostaTrasparente(colonna, true); });
    prova([&] { intestazioni.ridisegna(); });
    prova([&] { intestazioni.impostaOrdine(ordine); });
}

} // namespace norvel::query
