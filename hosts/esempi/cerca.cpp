// A host in C++: opens the search over a table of an SQLite database and prints the chosen value.
//
//     esempio_cpp DATABASE [TABLE [FIELD]]
//
// Exit status: 0 a row was chosen, 1 none was, 2 the data could not be opened.
#include <NorvelRicerca/NorvelRicerca.h>
#include <iostream>
#include <string>

namespace {

std::string search(const std::string& database, const std::string& table,
                   const std::string& field) {
    const std::string query = "SELECT * FROM " + table;
    const auto rows = norvel::apriRecordset(
        "Provider=SQLite;Data Source=" + database, query, norvel::adodb::adLockReadOnly,
        norvel::adodb::adAsyncFetch | norvel::adodb::adAsyncFetchNonBlocking);

    norvel::Ricerca ricerca;
    ricerca.SetCaption("Ricerca in " + table);
    ricerca.SetWindowsState("1"); // centred
    ricerca.SetStatusBar("1");
    ricerca.SetFilterBar("1");
    ricerca.SetCampoRicerca(field); // what is handed back
    ricerca.SetQueryBase(query);
    ricerca.SetRecordset(rows);
    ricerca.SetRecordsetOperatori(norvel::operatoriVuoti()); // none of its own
    ricerca.SetRecordsetViste(norvel::visteVuote());
    ricerca.Cerca(); // returns when the window is closed

    rows->Close(); // the rows are the host's; rows still on their way are not waited for
    return ricerca.Risposta();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " DATABASE [TABLE [FIELD]]\n";
        return 2;
    }
    try {
        const std::string answer =
            search(argv[1], argc > 2 ? argv[2] : "clienti", argc > 3 ? argv[3] : "codice");
        if (answer.empty()) return 1;
        std::cout << answer << '\n';
        return 0;
    } catch (const norvel::Errore& error) {
        std::cerr << argv[0] << ": " << error.numero() << " - " << error.descrizione() << '\n';
        return 2;
    }
}
