// The C interface: every function looks up its handles, asks the member table, and turns what is
// thrown into the thread's last error.
#include "component/NorvelRicercaC.h"

#include "component/DatiHost.h"
#include "component/Maniglie.h"
#include "component/Ricerca.h"
#include "component/TabellaMembri.h"
#include "component/Versione.h"
#include "platform/runtime/ErroreInCorso.h"
#include "platform/runtime/Text.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

using namespace norvel;

namespace {

// --- handles ---

// Never destroyed, as the session: a host may release handles while the process's statics go.
auto& ricerche() {
    static auto* registro = new RegistroManiglie<nr_ricerca, Ricerca>;
    return *registro;
}
auto& recordset() {
    static auto* registro = new RegistroManiglie<nr_recordset, adodb::Recordset>;
    return *registro;
}
auto& connessioni() {
    static auto* registro = new RegistroManiglie<nr_connection, adodb::Connection>;
    return *registro;
}

// --- the last error ---

struct UltimoErrore {
    std::int64_t numero = 0;
    std::string testo;
};

UltimoErrore& ultimoErrore() noexcept {
    thread_local UltimoErrore errore;
    return errore;
}

// In a catch block: remembers what is being trapped.
void ricordaErrore() noexcept {
    try {
        const Errore errore = erroreInCorso();
        ultimoErrore().numero = errore.numero();
        ultimoErrore().testo = errore.descrizione();
    } catch (...) { // no memory to say more
        ultimoErrore().numero = 7;
        ultimoErrore().testo.clear();
    }
}

void dimenticaErrore() noexcept {
    ultimoErrore().numero = 0;
    ultimoErrore().testo.clear();
}

// Runs what a function of the interface does; its result, or caduta where it failed. The error is
// cleared at the end, not before: a host's own handler may have called the interface meanwhile.
template <class Risultato, class Azione>
Risultato esegui(Risultato caduta, Azione azione) noexcept {
    try {
        Risultato risultato = azione();
        dimenticaErrore();
        return risultato;
    } catch (...) {
        ricordaErrore();
        return caduta;
    }
}

template <class Azione>
int eseguiOk(Azione azione) noexcept {
    return esegui(NR_ERROR, [&] {
        azione();
        return NR_OK;
    });
}

// --- arguments and results ---

std::string testoDato(const char* testo) {
    return testo ? toValidUtf8(testo) : std::string();
}

const char* obbligatorio(const char* testo) {
    if (!testo) throw erroreArgomento();
    return testo;
}

char* testoPerChiamante(const std::string& testo) {
    // A text may hold a NUL of its own; the caller sees it up to there, as every C text.
    auto* copia = static_cast<char*>(std::malloc(testo.size() + 1));
    if (!copia) throw std::bad_alloc();
    std::memcpy(copia, testo.c_str(), testo.size() + 1);
    return copia;
}

int scriviMembro(nr_ricerca* search, const char* property, const Variant& valore, unsigned modo) {
    const std::shared_ptr<Ricerca> ricerca = ricerche().trova(search);
    Invoke(*ricerca, std::string_view(obbligatorio(property)), modo, {&valore, 1});
    return NR_OK;
}

Variant leggiMembro(nr_ricerca* search, const char* property) {
    const std::shared_ptr<Ricerca> ricerca = ricerche().trova(search);
    return Invoke(*ricerca, std::string_view(obbligatorio(property)), modoGet);
}

const Membro& membroAlPosto(std::size_t place) {
    if (place >= tabellaMembri().size()) throw erroreArgomento();
    return tabellaMembri()[place];
}

} // namespace

extern "C" {

int nr_abi(void) {
    return NR_ABI;
}
const char* nr_version(void) {
    return versioneBreve();
}

int64_t nr_last_error_number(void) {
    return ultimoErrore().numero;
}
const char* nr_last_error_text(void) {
    return ultimoErrore().testo.c_str();
}

nr_ricerca* nr_ricerca_create(void) {
    return esegui<nr_ricerca*>(nullptr,
                               [] { return ricerche().aggiungi(std::make_shared<Ricerca>()); });
}

int nr_ricerca_release(nr_ricerca* search) {
    return eseguiOk([&] { ricerche().togli(search); });
}

int nr_put_text(nr_ricerca* search, const char* property, const char* value) {
    return eseguiOk([&] { scriviMembro(search, property, testoDato(value), modoLet); });
}

int nr_put_boolean(nr_ricerca* search, const char* property, int value) {
    return eseguiOk([&] { scriviMembro(search, property, value != 0, modoLet); });
}

int nr_put_integer(nr_ricerca* search, const char* property, int64_t value) {
    return eseguiOk([&] { scriviMembro(search, property, value, modoLet); });
}

int nr_put_number(nr_ricerca* search, const char* property, double value) {
    return eseguiOk([&] { scriviMembro(search, property, value, modoLet); });
}

int nr_putref(nr_ricerca* search, const char* property, nr_recordset* recordset_handle) {
    return eseguiOk([&] {
        ObjectRef oggetto;
        if (recordset_handle) oggetto = recordset().trova(recordset_handle);
        scriviMembro(search, property, oggetto, modoSet);
    });
}

char* nr_get_text(nr_ricerca* search, const char* property) {
    return esegui<char*>(nullptr,
                         [&] { return testoPerChiamante(leggiMembro(search, property).toText()); });
}

int nr_get_boolean(nr_ricerca* search, const char* property, int* value) {
    return eseguiOk([&] {
        if (!value) throw erroreArgomento();
        *value = leggiMembro(search, property).toBoolean() ? 1 : 0;
    });
}

int nr_get_integer(nr_ricerca* search, const char* property, int64_t* value) {
    return eseguiOk([&] {
        if (!value) throw erroreArgomento();
        *value = leggiMembro(search, property).toI8();
    });
}

int nr_get_number(nr_ricerca* search, const char* property, double* value) {
    return eseguiOk([&] {
        if (!value) throw erroreArgomento();
        *value = leggiMembro(search, property).toDouble();
    });
}

void nr_free_text(char* text) {
    std::free(text);
}

int nr_call(nr_ricerca* search, const char* method) {
    return eseguiOk([&] {
        const std::shared_ptr<Ricerca> ricerca = ricerche().trova(search);
        Invoke(*ricerca, std::string_view(obbligatorio(method)), modoMetodo);
    });
}

size_t nr_member_count(void) {
    return tabellaMembri().size();
}

const char* nr_member_name(size_t place) {
    return esegui<const char*>(nullptr, [&] { return membroAlPosto(place).nome.data(); });
}

int32_t nr_member_id(size_t place) {
    return esegui<int32_t>(0, [&] { return membroAlPosto(place).id; });
}

int nr_member_kinds(size_t place) {
    return esegui<int>(0, [&] { return static_cast<int>(membroAlPosto(place).modi); });
}

nr_connection* nr_connection_open(const char* connection_string) {
    return esegui<nr_connection*>(nullptr, [&] {
        adodb::ConnectionRef connessione = adodb::makeConnection();
        connessione->Open(testoDato(obbligatorio(connection_string)));
        return connessioni().aggiungi(std::move(connessione));
    });
}

int nr_connection_release(nr_connection* connection) {
    return eseguiOk([&] { connessioni().togli(connection); });
}

nr_recordset* nr_recordset_open(const char* connection_string, const char* sql, int lock,
                                int options) {
    return esegui<nr_recordset*>(nullptr, [&] {
        return recordset().aggiungi(apriRecordset(testoDato(obbligatorio(connection_string)),
                                                  testoDato(obbligatorio(sql)),
                                                  static_cast<adodb::LockTypeEnum>(lock), options));
    });
}

nr_recordset* nr_recordset_open_on(nr_connection* connection, const char* sql, int lock,
                                   int options) {
    return esegui<nr_recordset*>(nullptr, [&] {
        return recordset().aggiungi(apriRecordset(ObjectRef(connessioni().trova(connection)),
                                                  testoDato(obbligatorio(sql)),
                                                  static_cast<adodb::LockTypeEnum>(lock), options));
    });
}

nr_recordset* nr_recordset_create(const char* const* field_names, size_t count) {
    return esegui<nr_recordset*>(nullptr, [&] {
        if (!field_names) throw erroreArgomento();
        std::vector<std::string> campi;
        for (size_t campo = 0; campo < count; ++campo)
            campi.push_back(testoDato(obbligatorio(field_names[campo])));
        return recordset().aggiungi(recordsetVuoto(campi));
    });
}

int64_t nr_recordset_count(nr_recordset* recordset_handle) {
    return esegui<int64_t>(-1, [&] { return recordset().trova(recordset_handle)->RecordCount(); });
}

int nr_recordset_release(nr_recordset* recordset_handle) {
    return eseguiOk([&] { recordset().togli(recordset_handle); });
}

} // extern "C"
