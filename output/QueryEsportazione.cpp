#include "output/QueryEsportazione.h"

#include "platform/runtime/Errore.h"
#include "query/FormaQuery.h"
#include "query/TestoSql.h"

#include <memory>

namespace norvel::output {

namespace {

std::string componi(const std::string& q, const std::string& filtro) {
    std::string base = q;
    if (query::contiene(q, " Order BY")) base = q.substr(0, query::cerca(q, "Order by"));
    return base + (query::contiene(base, " where ") ? " and " : " where ") +
           query::sostituisci(filtro, "*", "%");
}

// "" where there is none.
std::string testoFiltro(const Variant& filtro) {
    if (filtro.isText()) return filtro.text();
    if (filtro.isEmpty() || (filtro.isNumeric() && equalsNumber(filtro, 0))) return "";
    throw erroreTipoNonCorrispondente();
}

std::string testoComando(const adodb::Recordset& recordset) {
    const Variant comando = recordset.ActiveCommand();
    const auto attivo =
        comando.isObject() ? std::dynamic_pointer_cast<adodb::Command>(comando.object()) : nullptr;
    if (!attivo) throw erroreOggettoNonImpostato();
    return attivo->CommandText();
}

} // namespace

std::string queryEsportazione(const std::string& q, const Variant& filtro) {
    const std::string testo = testoFiltro(filtro);
    return testo.empty() ? q : componi(q, testo);
}

std::string queryEsportazione(const adodb::Recordset& recordset) {
    std::string q = testoComando(recordset);
    const std::string filtro = testoFiltro(recordset.Filter());
    if (filtro.empty()) return q;
    return query::queryControllataNonResa(
        [&q](const std::string& valori) { return componi(q, valori); }, filtro,
        adodb::connectionText(recordset));
}

} // namespace norvel::output
