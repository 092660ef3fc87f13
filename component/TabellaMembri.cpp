#include "component/TabellaMembri.h"

#include "platform/runtime/Text.h"

#include <algorithm>
#include <array>
#include <memory>

namespace norvel {

namespace {

// --- accessors, made from the class's own members ---

template <auto Lettore>
Variant leggi(const Ricerca& ricerca) {
    return (ricerca.*Lettore)();
}

template <void (Ricerca::*Scrittore)(const std::string&)>
void scriviTesto(Ricerca& ricerca, const Variant& valore) {
    (ricerca.*Scrittore)(valore.text());
}

template <void (Ricerca::*Scrittore)(bool)>
void scriviBooleano(Ricerca& ricerca, const Variant& valore) {
    (ricerca.*Scrittore)(valore.toBoolean());
}

template <void (Ricerca::*Scrittore)(adodb::RecordsetRef)>
void scriviRecordset(Ricerca& ricerca, const Variant& valore) {
    (ricerca.*Scrittore)(std::dynamic_pointer_cast<adodb::Recordset>(valore.object()));
}

Variant chiamaRicerca(Ricerca& ricerca) {
    return ricerca.Cerca();
}
Variant chiamaAbilitaCombo(Ricerca& ricerca) {
    ricerca.abilitaCombo();
    return {};
}

// --- rows of the table ---

template <auto Lettore, auto Scrittore>
constexpr Membro testo(std::string_view nome, DispId id) {
    return {nome, id, modoGet | modoLet, TipoMembro::Testo, leggi<Lettore>, scriviTesto<Scrittore>,
            {}};
}

template <auto Lettore>
constexpr Membro testoInLettura(std::string_view nome, DispId id) {
    return {nome, id, modoGet, TipoMembro::Testo, leggi<Lettore>, {}, {}};
}

template <auto Scrittore>
constexpr Membro testoInScrittura(std::string_view nome, DispId id) {
    return {nome, id, modoLet, TipoMembro::Testo, {}, scriviTesto<Scrittore>, {}};
}

template <auto Lettore, auto Scrittore>
constexpr Membro booleano(std::string_view nome, DispId id) {
    return {nome,
            id,
            modoGet | modoLet,
            TipoMembro::Booleano,
            leggi<Lettore>,
            scriviBooleano<Scrittore>,
            {}};
}

template <auto Scrittore>
constexpr Membro recordset(std::string_view nome, DispId id) {
    return {nome, id, modoSet, TipoMembro::Recordset, {}, scriviRecordset<Scrittore>, {}};
}

constexpr Membro metodo(std::string_view nome, DispId id, TipoMembro tipo,
                        Variant (*chiama)(Ricerca&)) {
    return {nome, id, modoMetodo, tipo, {}, {}, chiama};
}

using R = Ricerca;

constexpr std::array membri{
    testo<&R::PercorsoPers, &R::SetPercorsoPers>("PercorsoPers", 0x68030011),
    testo<&R::Percorso, &R::SetPercorso>("Percorso", 0x68030010),
    testo<&R::User, &R::SetUser>("User", 0x6803000F),
    testoInLettura<&R::Risposta>("Risposta", 0x6803000E),
    testo<&R::Modulo, &R::SetModulo>("Modulo", 0x6803000D),
    booleano<&R::SoloRicerca, &R::SetSoloRicerca>("SoloRicerca", 0x68030015),
    testo<&R::Caption, &R::SetCaption>("Caption", 0x6803000C),
    testo<&R::StatusBar, &R::SetStatusBar>("StatusBar", 0x6803000B),
    testo<&R::Toolbar, &R::SetToolbar>("Toolbar", 0x6803000A),
    testo<&R::Top, &R::SetTop>("Top", 0x68030009),
    testo<&R::Left, &R::SetLeft>("Left", 0x68030008),
    testo<&R::Height, &R::SetHeight>("Height", 0x68030007),
    testo<&R::Width, &R::SetWidth>("Width", 0x68030006),
    testo<&R::WindowsState, &R::SetWindowsState>("WindowsState", 0x68030005),
    booleano<&R::SelezioneMultipla, &R::SetSelezioneMultipla>("SelezioneMultipla", 0x68030014),
    testo<&R::FilterBar, &R::SetFilterBar>("FilterBar", 0x68030004),
    testo<&R::CampoRicerca, &R::SetCampoRicerca>("CampoRicerca", 0x68030003),
    testo<&R::AbilitaModificaCampi, &R::SetAbilitaModificaCampi>("AbilitaModificaCampi",
                                                                 0x68030016),
    metodo("Ricerca", 0x60030012, TipoMembro::Variante, chiamaRicerca),
    metodo("abilitaCombo", 0x60030017, TipoMembro::Nessuno, chiamaAbilitaCombo),
    testoInScrittura<&R::SetQueryBase>("QueryBase", 0x68030018),
    recordset<&R::SetRecordset>("Recordset", 0x68030002),
    recordset<&R::SetRecordsetOperatori>("RecordsetOperatori", 0x68030001),
    recordset<&R::SetRecordsetViste>("RecordsetViste", 0x68030000),
    testoInLettura<&R::Ver>("Ver", 0x68030013),
};

// --- a call ---

Errore erroreMembro() {
    return {438, "Proprietà o metodo non supportati dall'oggetto"};
}
Errore erroreArgomenti() {
    return {450, "Numero di argomenti errato o assegnazione di proprietà non valida"};
}

// A value as the member's type wants it.
Variant converti(const Variant& valore, TipoMembro tipo) {
    switch (tipo) {
    case TipoMembro::Testo:
        return valore.toText();
    case TipoMembro::Booleano:
        return valore.toBoolean();
    case TipoMembro::Recordset:
        if (!valore.isObject()) throw erroreTipoNonCorrispondente();
        if (valore.object() && !std::dynamic_pointer_cast<adodb::Recordset>(valore.object()))
            throw erroreTipoNonCorrispondente();
        return valore;
    default:
        return valore;
    }
}

Variant invoca(Ricerca& ricerca, const Membro* membro, unsigned modo,
               std::span<const Variant> argomenti) {
    const bool legge = (modo & (modoMetodo | modoGet)) != 0;
    const bool scrive = (modo & (modoLet | modoSet)) != 0;
    if (legge == scrive || (modo & ~(modoMetodo | modoGet | modoLet | modoSet)) != 0)
        throw erroreArgomento();
    if (!membro || (membro->modi & modo) == 0) throw erroreMembro();
    if (argomenti.size() != (scrive ? 1U : 0U)) throw erroreArgomenti();
    if (scrive) {
        membro->scrivi(ricerca, converti(argomenti.front(), membro->tipo));
        return {};
    }
    return membro->chiama ? membro->chiama(ricerca) : membro->leggi(ricerca);
}

} // namespace

std::span<const Membro> tabellaMembri() {
    return membri;
}

const Membro* trovaMembro(std::string_view nome) {
    const auto trovato = std::find_if(membri.begin(), membri.end(), [&](const Membro& membro) {
        return equalsText(membro.nome, nome);
    });
    return trovato == membri.end() ? nullptr : &*trovato;
}

const Membro* trovaMembro(DispId id) {
    const auto trovato = std::find_if(membri.begin(), membri.end(),
                                      [&](const Membro& membro) { return membro.id == id; });
    return trovato == membri.end() ? nullptr : &*trovato;
}

DispId GetIDsOfNames(std::string_view nome) {
    const Membro* membro = trovaMembro(nome);
    if (!membro) throw erroreMembro();
    return membro->id;
}

Variant Invoke(Ricerca& ricerca, DispId id, unsigned modo, std::span<const Variant> argomenti) {
    return invoca(ricerca, trovaMembro(id), modo, argomenti);
}

Variant Invoke(Ricerca& ricerca, std::string_view nome, unsigned modo,
               std::span<const Variant> argomenti) {
    return invoca(ricerca, trovaMembro(nome), modo, argomenti);
}

} // namespace norvel
