#include "query/ListaValori.h"

#include "platform/runtime/Text.h"
#include "query/ElaboraQuery.h"
#include "query/FormaQuery.h"
#include "query/TestoSql.h"

#include <memory>

namespace norvel::query {

namespace {

// The running query as a subquery, without its hint and one ";" at its end.
std::string queryInterna(const RichiestaValori& richiesta) {
    std::string q = richiesta.testoComando
                        ? trimText(sostituisci(*richiesta.testoComando, "\r\n", " "))
                        : richiesta.queryBase;
    q = togliOptionFast(q);
    if (q.ends_with(';')) q.pop_back();
    return q;
}

// "" where there is none.
std::string testoFiltro(const Variant& filtro) {
    if (filtro.isText()) return filtro.text();
    if (filtro.isEmpty() || (filtro.isNumeric() && equalsNumber(filtro, 0))) return "";
    throw erroreTipoNonCorrispondente();
}

// The recordset's filter in the words of SQL. The field of the null tests is always that of the
// open column, and the rewriting knows nothing of quotes.
std::string filtroInSql(const std::string& filtro, const std::string& f) {
    std::string t = sostituisci(filtro, "*", "%");
    t = sostituisci(t, "=NULL", " IS NULL OR RTRIM(" + f + ")=''");
    return sostituisci(t, "<>NULL", " IS NOT NULL OR RTRIM(" + f + ")<>''");
}

std::string componi(const std::string& q, const std::string& f, const std::string& filtro) {
    std::string query = "SELECT myTR." + f + " FROM (" + q + ") myTR WHERE ";
    if (!filtro.empty()) query += "(" + filtroInSql(filtro, f) + ") AND ";
    return query + "RTRIM(myTR." + f + ")<>'' GROUP BY myTR." + f + " ORDER BY myTR." + f;
}

} // namespace

RichiestaValori richiestaValori(const adodb::Recordset& recordset, const std::string& campo,
                                const std::string& queryBase) {
    RichiestaValori richiesta{campo, std::nullopt, queryBase, recordset.Filter(),
                              adodb::connectionText(recordset)};
    const Variant comando = recordset.ActiveCommand();
    if (!comando.isObject()) return richiesta;
    if (const auto attivo = std::dynamic_pointer_cast<adodb::Command>(comando.object()))
        richiesta.testoComando = attivo->CommandText();
    return richiesta;
}

std::string componiQueryValori(const RichiestaValori& richiesta) {
    return componi(queryInterna(richiesta), richiesta.campo, testoFiltro(richiesta.filtro));
}

std::string queryListaValori(const RichiestaValori& richiesta) {
    const std::string q = queryInterna(richiesta);
    return queryControllata(
        [&](const std::string& filtro) { return componi(q, richiesta.campo, filtro); },
        testoFiltro(richiesta.filtro), richiesta.strConnessione);
}

std::string testoVoce(const Variant& valore, adodb::DataTypeEnum tipo) {
    if (tipo == adodb::adBoolean) return std::to_string(valore.toI2());
    return Nullo(valore).toText();
}

} // namespace norvel::query
