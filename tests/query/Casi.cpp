#include "tests/query/Casi.h"

#include "query/ElaboraQuery.h"

#include <fstream>
#include <stdexcept>

namespace norvel::query {

namespace {

constexpr std::string_view apre = "«";
constexpr std::string_view chiude = "»";

int cifraEsadecimale(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    throw std::runtime_error("cifra esadecimale");
}

std::string senzaBarre(std::string_view testo) {
    std::string piano;
    for (std::size_t at = 0; at < testo.size(); ++at) {
        if (testo[at] != '\\') {
            piano += testo[at];
            continue;
        }
        const char c = testo.at(++at);
        if (c == 'x') {
            piano += static_cast<char>(cifraEsadecimale(testo.at(at + 1)) * 16 +
                                       cifraEsadecimale(testo.at(at + 2)));
            at += 2;
        } else {
            piano += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
        }
    }
    return piano;
}

Voce leggiVoce(std::string_view riga) {
    Voce voce;
    for (riga.remove_prefix(std::min(riga.find_first_not_of(' '), riga.size())); !riga.empty();
         riga.remove_prefix(std::min(riga.find_first_not_of(' '), riga.size()))) {
        std::string parola;
        if (riga.starts_with(apre)) {
            const std::size_t fine = riga.find(chiude);
            if (fine == std::string_view::npos) throw std::runtime_error("manca »");
            parola = senzaBarre(riga.substr(apre.size(), fine - apre.size()));
            riga.remove_prefix(fine + chiude.size());
        } else {
            const std::size_t fine = std::min(riga.find(' '), riga.size());
            parola = riga.substr(0, fine);
            riga.remove_prefix(fine);
        }
        if (voce.chiave.empty())
            voce.chiave = parola;
        else
            voce.argomenti.push_back(parola);
    }
    return voce;
}

std::vector<Caso> leggi(const std::string& nome) {
    std::ifstream file(std::string(NR_SOURCE_DIR) + "/tests/query/casi/" + nome);
    if (!file) throw std::runtime_error("il file non c'è");
    std::vector<Caso> casi;
    bool dentro = false;
    int numero = 0;
    for (std::string riga; std::getline(file, riga);) {
        ++numero;
        if (riga.starts_with('#')) continue;
        const Voce voce = leggiVoce(riga);
        if (voce.chiave.empty()) {
            dentro = false;
        } else if (voce.chiave == "caso" && voce.argomenti.size() == 1) {
            casi.push_back({voce.argomenti[0], nome + ":" + std::to_string(numero), {}});
            dentro = true;
        } else if (dentro) {
            casi.back().voci.push_back(voce);
        } else {
            throw std::runtime_error("riga " + std::to_string(numero) + " fuori da un caso");
        }
    }
    return casi;
}

} // namespace

std::optional<std::string> Caso::testo(const std::string& chiave) const {
    const std::vector<Voce> trovate = tutte(chiave);
    if (trovate.empty()) return std::nullopt;
    if (trovate.size() > 1 || trovate[0].argomenti.size() != 1)
        throw std::runtime_error(luogo + ": " + chiave + " vuole un solo argomento");
    return trovate[0].argomenti[0];
}

std::string Caso::testoO(const std::string& chiave) const {
    return testo(chiave).value_or("");
}

std::vector<Voce> Caso::tutte(const std::string& chiave) const {
    std::vector<Voce> trovate;
    for (const Voce& voce : voci)
        if (voce.chiave == chiave) trovate.push_back(voce);
    return trovate;
}

std::ostream& operator<<(std::ostream& uscita, const Caso& caso) {
    return uscita << caso.luogo;
}

std::vector<Caso> leggiCasi(const std::string& file) {
    try {
        return leggi(file);
    } catch (const std::exception& errore) {
        return {{"Illeggibile", file + ": " + errore.what(), {}}};
    }
}

RichiestaValori richiestaDi(const Caso& caso) {
    RichiestaValori richiesta;
    richiesta.campo = caso.testoO("campo");
    richiesta.testoComando = caso.testo("comando");
    richiesta.queryBase = caso.testoO("base");
    richiesta.filtro = std::int32_t{0};
    if (const auto filtro = caso.testo("filtro")) richiesta.filtro = *filtro;
    richiesta.strConnessione = caso.testoO("connessione");
    return richiesta;
}

std::string queryDelCaso(const Caso& caso, const std::string& connessione) {
    if (const auto query = caso.testo("query")) {
        Variant testo(*query);
        return ElaboraQuery(testo, connessione);
    }
    RichiestaValori richiesta = richiestaDi(caso);
    richiesta.strConnessione = connessione;
    return queryListaValori(richiesta);
}

} // namespace norvel::query
