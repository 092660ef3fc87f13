#include "views/VociMenu.h"

#include "platform/runtime/Text.h"
#include "views/Disposizioni.h"

namespace norvel::views {

namespace {

constexpr VoceMenu vociComandi[] = {
    {"nuovo", "Posizione colonne", "POSIZIONE",
     "Permette di modificare l'ordine e la dimensione delle colonne della griglia di ricerca",
     false},
    {"vista", "Scopri/nascondi", "VISUALIZZA",
     "Permette di nascondere o visualizzare le colonne della vista personalizzata", false},
    {"ordine", "Modifica Stile", "STILE", "Cambiare colori e stile della griglia", false},
    {"salva", "Salvataggio vista", "SALVA", "Salvataggio della vista modificata", false},
    {"chiudi", "Chiudi", "CHIUDI", "Chiususa finestra parametri configurazione", false},
};

constexpr VoceMenu vociNote[] = {
    {immaginiMenu[2 - 1],
     "Tramite le voci sopra riportate è possibile creare visualizzazioni e stampe personalizzate "
     "come numero, dimensione e ordine di campi",
     "NEWFOLDER", "", true},
};

constexpr GruppoMenu gruppi[] = {
    {"Configura", "Configurazione", "MULTI1", "Parametri",
     "Personalizza i filtri di ricerca/stampa.", true, vociComandi},
    {"", "TAMBORIN", "MULTI2", "", "", false, vociNote},
};

constexpr const char* chiaveChiudi = "Chiudi";

} // namespace

std::span<const GruppoMenu> gruppiMenu() {
    return gruppi;
}

const VoceMenu& voceDiPagina(int pagina) {
    return vociComandi[pagina];
}

std::optional<int> paginaVoce(std::string_view chiave) {
    for (int pagina = 0; pagina < pagineConfigura; ++pagina)
        if (equalsText(chiave, voceDiPagina(pagina).chiave)) return pagina;
    if (equalsText(chiave, chiaveChiudi)) return std::nullopt;
    return 0;
}

std::string nomeIniziale(const VariabiliGlobali& sessione) {
    return testoSessione(sessione.gUser) + testoSessione(sessione.gModulo);
}

std::string nomeProposto(const VariabiliGlobali& sessione) {
    return testoSessione(sessione.gUser) + "Pers";
}

std::string titoloConfigura(const std::string& disegnato, const VariabiliGlobali& sessione) {
    return disegnato + "   --> " + testoSessione(sessione.gModulo);
}

} // namespace norvel::views
