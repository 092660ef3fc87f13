#include "query/RiscritturaIif.h"

#include "platform/runtime/Errore.h"
#include "query/TestoSql.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <vector>

namespace norvel::query {

namespace {

constexpr std::string_view segnoIif = "iif(";
constexpr std::string_view segnoChiusura = ";)";
constexpr std::string_view testoCase = " Case when ";
constexpr std::string_view testoThen = " then ";
constexpr std::string_view testoElse = " else ";
constexpr std::string_view testoEnd = " end ";
static_assert(testoThen.size() == testoElse.size());

// Where a sign stands in the text as it was given.
struct Luogo {
    std::size_t byte = 0;
    std::size_t carattere = 0; // from 0
};

// The places of one sign, ascending, of which some are gone because they were replaced.
class Luoghi {
  public:
    void aggiungi(Luogo luogo) { luoghi_.push_back(luogo); }
    void completa() {
        prossimo_.resize(luoghi_.size() + 1);
        std::iota(prossimo_.begin(), prossimo_.end(), std::size_t{0});
    }
    std::size_t numero() const { return luoghi_.size(); }
    const Luogo& operator[](std::size_t indice) const { return luoghi_[indice]; }
    const std::vector<Luogo>& tutti() const { return luoghi_; }

    // The index of the first that is left, from indice on; numero() if none is.
    std::size_t rimasto(std::size_t indice) {
        while (prossimo_[indice] != indice) {
            prossimo_[indice] = prossimo_[prossimo_[indice]];
            indice = prossimo_[indice];
        }
        return indice;
    }
    void togli(std::size_t indice) { prossimo_[indice] = indice + 1; }
    // The index of the sign at this byte; numero() if there is none.
    std::size_t indiceDi(std::size_t byte) const {
        const auto at = std::lower_bound(luoghi_.begin(), luoghi_.end(), byte,
                                         [](const Luogo& l, std::size_t b) { return l.byte < b; });
        const bool trovato = at != luoghi_.end() && at->byte == byte;
        return trovato ? static_cast<std::size_t>(at - luoghi_.begin()) : numero();
    }

  private:
    std::vector<Luogo> luoghi_;
    std::vector<std::size_t> prossimo_; // the index itself while it is there
};

// Replacements of one kind, in the order they were made, which is that of the text.
struct Sostituzioni {
    std::size_t crescita = 0; // characters that each one adds
    std::vector<std::size_t> byte;

    std::size_t crescitaPrimaDi(std::size_t posizione) const {
        const auto at = std::lower_bound(byte.begin(), byte.end(), posizione);
        return crescita * static_cast<std::size_t>(at - byte.begin());
    }
};

// The rule without ever moving the text: signs keep their places, and their positions in the text
// as it then stands are reckoned from the replacements before them.
class Riscrittura {
  public:
    explicit Riscrittura(std::string_view testo) : testo_(testo) {
        std::size_t carattere = 0;
        for (std::size_t at = 0; at < testo.size(); ++at) {
            if (stanno(testo, at, segnoIif)) iif_.aggiungi({at, carattere});
            if (testo[at] == ';') separatori_.aggiungi({at, carattere});
            if (stanno(testo, at, segnoChiusura)) chiusure_.aggiungi({at, carattere});
            const auto byte = static_cast<unsigned char>(testo[at]);
            if ((byte & 0xC0U) != 0x80U) carattere += byte >= 0xF0U ? 2 : 1; // 16-bit units
        }
        for (Luoghi* luoghi : {&iif_, &separatori_, &chiusure_})
            luoghi->completa();
        for (std::size_t i = 0; i < iif_.numero(); ++i)
            if (iif_[i].byte > 0 && testo[iif_[i].byte - 1] == ' ') dopoBlank_.insert(i);
    }

    std::string esegui() {
        std::size_t p = cercaDa(iif_, 1);
        while (p != 0) {
            sostituisciIif();
            p = cercaDa(separatori_, p + 1);
            sostituisciSeparatore();
            p = cercaDa(separatori_, p + 1);
            sostituisciSeparatore();
            p = cercaDa(chiusure_, p + 1);
            sostituisciChiusura();
            if (p == 0) throw erroreArgomento();
            p = cercaIifDopoBlank(p);
        }
        return composto();
    }

  private:
    // In the text as it stands, from 1.
    std::size_t posizione(const Luogo& luogo) const {
        return luogo.carattere + 1 + aperture_.crescitaPrimaDi(luogo.byte) +
               divisioni_.crescitaPrimaDi(luogo.byte) + fini_.crescitaPrimaDi(luogo.byte);
    }
    // Index of the first sign, left or gone, whose position is at least p.
    std::size_t primoDa(const Luoghi& luoghi, std::size_t p) const {
        const auto& tutti = luoghi.tutti();
        const auto at = std::partition_point(
            tutti.begin(), tutti.end(), [&](const Luogo& luogo) { return posizione(luogo) < p; });
        return static_cast<std::size_t>(at - tutti.begin());
    }
    std::size_t cercaDa(Luoghi& luoghi, std::size_t p) {
        const std::size_t indice = luoghi.rimasto(primoDa(luoghi, p));
        return indice < luoghi.numero() ? posizione(luoghi[indice]) : 0;
    }
    std::size_t cercaIifDopoBlank(std::size_t p) const {
        const auto at = dopoBlank_.lower_bound(primoDa(iif_, p + 1));
        return at == dopoBlank_.end() ? 0 : posizione(iif_[*at]) - 1;
    }

    void sostituisciIif() {
        const std::size_t indice = iif_.rimasto(0);
        if (indice == iif_.numero()) return;
        iif_.togli(indice);
        dopoBlank_.erase(indice);
        aperture_.byte.push_back(iif_[indice].byte);
        finisceInBlank(iif_[indice].byte + segnoIif.size());
    }
    void sostituisciSeparatore() {
        const std::size_t indice = separatori_.rimasto(0);
        if (indice == separatori_.numero()) return;
        const std::size_t byte = separatori_[indice].byte;
        separatori_.togli(indice);
        if (const std::size_t i = chiusure_.indiceDi(byte); i < chiusure_.numero())
            chiusure_.togli(i);
        divisioni_.byte.push_back(byte);
        finisceInBlank(byte + 1);
    }
    void sostituisciChiusura() {
        const std::size_t indice = chiusure_.rimasto(0);
        if (indice == chiusure_.numero()) return;
        const std::size_t byte = chiusure_[indice].byte;
        chiusure_.togli(indice);
        separatori_.togli(separatori_.indiceDi(byte));
        fini_.byte.push_back(byte);
        finisceInBlank(byte + segnoChiusura.size());
    }
    // A replacement ends in a blank: an "iif(" right behind it has one before it now.
    void finisceInBlank(std::size_t byte) {
        const std::size_t indice = iif_.indiceDi(byte);
        if (indice < iif_.numero() && iif_.rimasto(indice) == indice) dopoBlank_.insert(indice);
    }

    std::string composto() const;

    std::string_view testo_;
    Luoghi iif_, separatori_, chiusure_;
    std::set<std::size_t> dopoBlank_; // indexes of those "iif(" left that stand behind a blank
    Sostituzioni aperture_{testoCase.size() - segnoIif.size(), {}};
    Sostituzioni divisioni_{testoThen.size() - 1, {}}; // then, else in turn
    Sostituzioni fini_{testoEnd.size() - segnoChiusura.size(), {}};
};

std::string Riscrittura::composto() const {
    struct Modifica {
        std::size_t byte, lunghezza;
        std::string_view nuovo;
    };
    std::vector<Modifica> modifiche;
    for (const std::size_t byte : aperture_.byte)
        modifiche.push_back({byte, segnoIif.size(), testoCase});
    for (std::size_t i = 0; i < divisioni_.byte.size(); ++i)
        modifiche.push_back({divisioni_.byte[i], 1, i % 2 == 0 ? testoThen : testoElse});
    for (const std::size_t byte : fini_.byte)
        modifiche.push_back({byte, segnoChiusura.size(), testoEnd});
    std::sort(modifiche.begin(), modifiche.end(),
              [](const Modifica& a, const Modifica& b) { return a.byte < b.byte; });

    std::string nuovo;
    nuovo.reserve(testo_.size() + modifiche.size() * 5);
    std::size_t fatto = 0;
    for (const Modifica& modifica : modifiche) {
        nuovo.append(testo_.substr(fatto, modifica.byte - fatto)).append(modifica.nuovo);
        fatto = modifica.byte + modifica.lunghezza;
    }
    return nuovo.append(testo_.substr(fatto));
}

} // namespace

std::string riscriviIif(std::string_view testo) {
    return Riscrittura(testo).esegui();
}

} // namespace norvel::query
