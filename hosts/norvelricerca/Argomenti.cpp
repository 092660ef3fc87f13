#include "hosts/norvelricerca/Argomenti.h"

#include "platform/runtime/Errore.h"
#include "platform/runtime/Text.h"
#include "platform/runtime/Variant.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace norvel::hosts {

namespace {

constexpr int erroreUso = 5; // the number of "Chiamata di routine o argomento non validi"

[[noreturn]] void rifiuta(const std::string& frase) {
    throw Errore(erroreUso, frase);
}

// The host's own options; every other one is a property.
enum class Opzione { Connessione, Operatori, Viste, Tempi, CreaDemo, Righe, Aiuto, Versione };

struct VoceOpzione {
    std::string_view nome;
    Opzione opzione;
    bool conValore;
};

constexpr VoceOpzione opzioni[] = {
    {"connessione", Opzione::Connessione, true},
    {"operatori", Opzione::Operatori, true},
    {"viste", Opzione::Viste, true},
    {"tempi", Opzione::Tempi, false},
    {"crea-demo", Opzione::CreaDemo, true},
    {"righe", Opzione::Righe, true},
    {"aiuto", Opzione::Aiuto, false},
    {"help", Opzione::Aiuto, false},
    {"versione", Opzione::Versione, false},
    {"version", Opzione::Versione, false},
};

const VoceOpzione* trovaOpzione(std::string_view nome) {
    const auto* voce = std::find_if(std::begin(opzioni), std::end(opzioni),
                                    [&](const auto& o) { return equalsText(o.nome, nome); });
    return voce == std::end(opzioni) ? nullptr : voce;
}

bool convertibile(const std::string& valore, TipoProprieta tipo) {
    try {
        if (tipo == TipoProprieta::Numero) equalsNumber(Variant(valore), 0);
        if (tipo == TipoProprieta::Booleano) Variant(valore).toBoolean();
        return true;
    } catch (const Errore&) {
        return false;
    }
}

std::int64_t leggiRighe(const std::string& testo) {
    std::int64_t righe = 0;
    const char* fine = testo.data() + testo.size();
    auto [letto, errore] = std::from_chars(testo.data(), fine, righe);
    if (errore != std::errc() || letto != fine || righe < 0)
        rifiuta("--righe vuole un numero intero, in sole cifre, non «" + testo + "»");
    return righe;
}

// The number of letters to change, add or drop to turn a into b: how likely b was meant by a.
std::size_t distanza(const std::string& a, const std::string& b) {
    std::vector<std::size_t> riga(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        riga[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonale = std::exchange(riga[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t sostituita = diagonale + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonale = riga[j];
            riga[j] = std::min({riga[j] + 1, riga[j - 1] + 1, sostituita});
        }
    }
    return riga[b.size()];
}

class Lettore {
  public:
    Lettore(const std::vector<std::string>& argomenti, const std::vector<Proprieta>& proprieta)
        : argomenti_(argomenti), proprieta_(proprieta) {}

    Argomenti leggi() {
        while (posizione_ < argomenti_.size() && !finito_)
            leggiUno(argomenti_[posizione_++]);
        if (!finito_) verifica();
        return std::move(esito_);
    }

  private:
    void leggiUno(const std::string& argomento) {
        if (argomento == "-h") return concludi(Azione::Aiuto);
        if (argomento.size() < 3 || !argomento.starts_with("--"))
            rifiuta("Argomento non previsto: «" + argomento +
                    "» (i valori seguono il nome della loro opzione)");
        const std::size_t uguale = argomento.find('=');
        nome_ = argomento.substr(2, uguale == std::string::npos ? uguale : uguale - 2);
        valore_.reset();
        if (uguale != std::string::npos) valore_ = argomento.substr(uguale + 1);

        if (const VoceOpzione* voce = trovaOpzione(nome_)) return leggiOpzione(*voce);
        for (const Proprieta& proprieta : proprieta_)
            if (equalsText(proprieta.nome, nome_)) return leggiProprieta(proprieta);
        rifiuta("Opzione sconosciuta: --" + nome_ + suggerimento());
    }

    void leggiOpzione(const VoceOpzione& voce) {
        if (!voce.conValore && valore_) rifiuta("--" + nome_ + " non vuole un valore");
        switch (voce.opzione) {
        case Opzione::Connessione:
            esito_.connessione = valoreNonVuoto();
            break;
        case Opzione::Operatori:
            esito_.operatori = valoreNonVuoto();
            break;
        case Opzione::Viste:
            esito_.viste = valoreNonVuoto();
            break;
        case Opzione::Tempi:
            esito_.tempi = true;
            break;
        case Opzione::CreaDemo:
            esito_.fileDemo = valoreNonVuoto();
            break;
        case Opzione::Righe:
            esito_.righe = leggiRighe(valore());
            conRighe_ = true;
            break;
        case Opzione::Aiuto:
            concludi(Azione::Aiuto);
            break;
        case Opzione::Versione:
            concludi(Azione::Versione);
            break;
        }
    }

    void leggiProprieta(const Proprieta& proprieta) {
        if (proprieta.tipo == TipoProprieta::SolaLettura)
            rifiuta("--" + proprieta.nome + " non si può assegnare: è il programma che lo scrive");
        if (proprieta.tipo == TipoProprieta::Oggetto)
            rifiuta("--" + proprieta.nome +
                    " non si può assegnare: i dati si indicano con --connessione e --QueryBase, "
                    "--operatori, --viste");
        std::string testo = toValidUtf8(valore());
        if (!convertibile(testo, proprieta.tipo))
            rifiuta("--" + proprieta.nome + " vuole " +
                    (proprieta.tipo == TipoProprieta::Numero ? "un numero" : "True o False") +
                    ", non «" + testo + "»");
        esito_.proprieta.emplace_back(proprieta.nome, std::move(testo));
    }

    std::string valore() {
        if (valore_) return *valore_;
        if (posizione_ >= argomenti_.size()) rifiuta("Manca il valore di --" + nome_);
        const std::string& seguente = argomenti_[posizione_];
        if (seguente.starts_with("--"))
            rifiuta("Manca il valore di --" + nome_ + " (se è proprio «" + seguente +
                    "», si scrive --" + nome_ + "=" + seguente + ")");
        ++posizione_;
        return seguente;
    }

    std::string valoreNonVuoto() {
        std::string testo = valore();
        if (testo.empty()) rifiuta("Il valore di --" + nome_ + " è vuoto");
        return testo;
    }

    void concludi(Azione azione) {
        esito_.azione = azione;
        finito_ = true;
    }

    void verifica() {
        if (!esito_.fileDemo.empty()) {
            if (!esito_.connessione.empty() || !esito_.proprieta.empty() ||
                !esito_.operatori.empty() || !esito_.viste.empty() || esito_.tempi)
                rifiuta("--crea-demo va da sola, con la sola --righe");
            return concludi(Azione::CreaDemo);
        }
        if (conRighe_) rifiuta("--righe vale soltanto con --crea-demo");
        if (esito_.connessione.empty()) rifiuta("Manca l'opzione obbligatoria --connessione");
        for (const char* nome : {"QueryBase", "CampoRicerca"}) {
            const std::string* testo = esito_.valore(nome);
            if (!testo) rifiuta(std::string("Manca l'opzione obbligatoria --") + nome);
            if (trimText(*testo).empty())
                rifiuta(std::string("Il valore di --") + nome + " è vuoto");
        }
    }

    // " (forse --Caption?)" where an option is at most two letters away.
    std::string suggerimento() const {
        const std::string scritto = foldText(nome_);
        std::size_t minima = 3;
        std::string_view migliore;
        const auto prova = [&](std::string_view candidato) {
            const std::size_t d = distanza(scritto, foldText(candidato));
            if (d < minima) {
                minima = d;
                migliore = candidato;
            }
        };
        for (const VoceOpzione& voce : opzioni)
            prova(voce.nome);
        for (const Proprieta& proprieta : proprieta_)
            if (proprieta.tipo != TipoProprieta::SolaLettura &&
                proprieta.tipo != TipoProprieta::Oggetto)
                prova(proprieta.nome);
        return migliore.empty() ? "" : " (forse --" + std::string(migliore) + "?)";
    }

    const std::vector<std::string>& argomenti_;
    const std::vector<Proprieta>& proprieta_;
    std::size_t posizione_ = 0;
    std::string nome_;                  // of the option being read, as typed
    std::optional<std::string> valore_; // what stood behind its "="
    bool conRighe_ = false;
    bool finito_ = false;
    Argomenti esito_;
};

} // namespace

const std::string* Argomenti::valore(const std::string& nome) const {
    const auto voce = std::find_if(proprieta.rbegin(), proprieta.rend(),
                                   [&](const auto& p) { return p.first == nome; });
    return voce == proprieta.rend() ? nullptr : &voce->second;
}

Argomenti leggiArgomenti(const std::vector<std::string>& argomenti,
                         const std::vector<Proprieta>& proprieta) {
    return Lettore(argomenti, proprieta).leggi();
}

} // namespace norvel::hosts
