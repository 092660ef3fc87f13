#include "views/ArchivioViste.h"

namespace norvel::views {

using namespace adodb;

namespace {

// A text field; Null counts as an empty one.
std::string testo(Recordset& recordset, const char* campo) {
    const Variant valore = recordset.Fields()(campo).Value();
    return valore.isNull() ? std::string() : valore.toText();
}

std::vector<std::string> nomi(Recordset& viste, const std::string& filtro) {
    viste.SetFilter(filtro);
    std::vector<std::string> trovati;
    if (viste.RecordCount() <= 0) return trovati;
    for (viste.MoveFirst(); !viste.EOF_(); viste.MoveNext())
        trovati.push_back(testo(viste, "NomeVista"));
    return trovati;
}

} // namespace

std::string filtroPreferita(const Proprietario& di) {
    return "codiceoperatore='" + di.utente + "' and preferito<>0 and codicericerca='" + di.modulo +
           "'";
}

std::string filtroViste(const Proprietario& di) {
    return "codiceoperatore='" + di.utente + "' and codicericerca='" + di.modulo + "'";
}

std::string filtroVisteElenco(const Proprietario& di) {
    return "CodiceOperatore='" + di.utente + "' AND CodiceRicerca='" + di.modulo + "'";
}

std::string filtroVistePerSalvare(const Proprietario& di) {
    return filtroViste(di) + " ";
}

std::string filtroVista(const Proprietario& di, const std::string& nome) {
    return filtroViste(di) + " and nomevista='" + nome + "'";
}

std::string filtroOperatore(const std::string& utente) {
    return " codiceutente='" + utente + "'";
}

bool permessoViste(Recordset& operatori, const std::string& utente) {
    operatori.SetFilter(filtroOperatore(utente));
    return operatori.RecordCount() >= 1 && operatori.Fields()("ricerchepers").Value().toBoolean();
}

std::optional<std::string> vistaPreferita(Recordset& viste, const Proprietario& di) {
    viste.SetFilter(filtroPreferita(di));
    if (viste.RecordCount() <= 0) return std::nullopt;
    return testo(viste, "NomeVista");
}

std::vector<std::string> nomiViste(Recordset& viste, const Proprietario& di) {
    return nomi(viste, filtroViste(di));
}

std::vector<std::string> nomiVisteElenco(Recordset& viste, const Proprietario& di) {
    return nomi(viste, filtroVisteElenco(di));
}

} // namespace norvel::views
