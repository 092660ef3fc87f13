// The bench of the window over servers that fail: real MariaDB and PostgreSQL, which the tests
// start, stop, freeze, lock; each test runs once a server.
#pragma once

#include "tests/platform/adodb/odbc/Servers.h"
#include "tests/views/window/BancoConfigura.h"

#include <functional>
#include <string>
#include <thread>

namespace norvel::search_window {

class BancoServer : public views::BancoConfigura, public testing::WithParamInterface<std::string> {
  protected:
    static constexpr int righeTabella = 30;
    using BancoConfigura::voci;
    using BancoQuery::voci;

    void SetUp() override {
        BancoConfigura::SetUp();
        server().start();
        amministra = makeConnection(server().connection());
        creaTabelle();
        connessione = makeConnection(stringaHost());
        ricerca.SetWidth("12000");
        ricerca.SetHeight("6000");
    }
    void TearDown() override {
        server().thaw();
        server().start();
        BancoConfigura::TearDown();
        amministra->Close();
        for (const Messaggio& box : boxes.shown())
            esamina(box.testo);
    }

    static adodb::ConnectionRef makeConnection(const std::string& stringa) {
        auto nuova = adodb::makeConnection();
        nuova->Open(stringa);
        return nuova;
    }
    adodb::TestServer& server() const { return adodb::testServer(GetParam()); }
    bool postgres() const { return server().isPostgres(); }
    std::string pick(const char* mariaDb, const char* postgreSql) const {
        return postgres() ? postgreSql : mariaDb;
    }
    // A host's string: the refresh finds SQL Server's name in it, which lets it act, and the window
    // the server's own notation, or the one that the provider reads itself.
    std::string stringaHost() const {
        return server().dialectConnection() +
               ";Application Name=" + pick("da SQL Server", "da SQL Server e Access");
    }
    // By another program.
    void altrove(const std::string& sql) const { amministra->Execute(sql); }

    // --- the tables ---
    // «lenti» are the same rows; each takes the seconds that stand in «pausa».
    void creaTabelle() const {
        altrove("DROP VIEW IF EXISTS lenti");
        for (const char* nome : {"clienti", "operatori", "ricerchepers", "pausa"})
            altrove(std::string("DROP TABLE IF EXISTS ") + nome);
        altrove("CREATE TABLE clienti (codice integer PRIMARY KEY, nome varchar(40), citta "
                "varchar(40))");
        std::string valori;
        for (int i = 1; i <= righeTabella; ++i)
            valori += (i > 1 ? ", (" : "(") + std::to_string(i) + ", 'Cliente " +
                      std::to_string(i) + "', '" + (i % 3 == 0 ? "Roma" : "Forlì") + "')";
        altrove("INSERT INTO clienti VALUES " + valori);
        altrove("CREATE TABLE pausa (secondi double precision)");
        altrove("INSERT INTO pausa VALUES (0)");
        altrove("CREATE VIEW lenti AS SELECT * FROM clienti WHERE " +
                pick("sleep((SELECT secondi FROM pausa)) = 0",
                     "pg_sleep((SELECT secondi FROM pausa)) IS NOT NULL"));
        altrove("CREATE TABLE operatori (codiceutente varchar(30) PRIMARY KEY, ricerchepers " +
                booleano() + ")");
        altrove("INSERT INTO operatori VALUES ('ROSSI', " + pick("1", "true") + ")");
        altrove("CREATE TABLE ricerchepers (codiceoperatore varchar(30), codicericerca "
                "varchar(30), NomeVista varchar(40), preferito " +
                booleano() + ", PRIMARY KEY (codiceoperatore, codicericerca, NomeVista))");
    }
    std::string booleano() const { return pick("tinyint(1)", "boolean"); }
    void rallenta(bool si) const { altrove(si ? "UPDATE pausa SET secondi = 600" : sveglia); }
    adodb::RecordsetRef clientiServer(const char* tabella = "clienti",
                                      adodb::LockTypeEnum blocco = adodb::adLockOptimistic) {
        return apriTabella(
            std::string("SELECT codice, nome, citta FROM ") + tabella + " ORDER BY codice", blocco);
    }
    std::string letto(const std::string& sql) const {
        auto rs = adodb::makeClientRecordset();
        rs->Open(sql, ObjectRef(amministra), adodb::adOpenStatic, adodb::adLockReadOnly,
                 adodb::adCmdText);
        return rs->EOF_() ? "" : rs->Fields()(0).Value().toDisplay();
    }
    std::string visteSalvate() const {
        auto rs = adodb::makeClientRecordset();
        rs->Open("SELECT NomeVista FROM ricerchepers ORDER BY NomeVista", ObjectRef(amministra),
                 adodb::adOpenStatic, adodb::adLockReadOnly, adodb::adCmdText);
        std::string nomi;
        for (; !rs->EOF_(); rs->MoveNext())
            nomi += (nomi.empty() ? "" : " ") + rs->Fields()(0).Value().toText();
        return nomi;
    }

    // --- faults ---
    // How many others' statements wait on the server, in a pause or for a lock.
    int inAttesa() const {
        const std::string quanti = letto(
            pick("SELECT count(*) FROM information_schema.processlist WHERE state LIKE '%lock%' OR "
                 "state = 'User sleep'",
                 "SELECT count(*) FROM pg_stat_activity WHERE state = 'active' AND wait_event_type "
                 "IN ('Lock', 'Timeout') AND pid <> pg_backend_pid()"));
        return std::stoi(quanti);
    }
    // A table that nobody else can read or change.
    void blocca(const std::string& tabella) {
        altro = makeConnection(server().connection());
        if (postgres()) altro->BeginTrans();
        altro->Execute(postgres() ? "LOCK TABLE " + tabella + " IN ACCESS EXCLUSIVE MODE"
                                  : "LOCK TABLES " + tabella + " WRITE");
    }
    void libera() {
        if (postgres()) altro->RollbackTrans();
        altro->Close();
    }
    // Every connection of others is ended by the server.
    void tagliaConnessioni() const {
        auto rs = adodb::makeClientRecordset();
        rs->Open(pick("SELECT id FROM information_schema.processlist WHERE id <> connection_id() "
                      "AND user = 'prova'",
                      "SELECT pid FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND usename "
                      "= 'prova' AND datname IS NOT NULL"),
                 ObjectRef(amministra), adodb::adOpenStatic, adodb::adLockReadOnly,
                 adodb::adCmdText);
        for (; !rs->EOF_(); rs->MoveNext()) {
            const std::string id = rs->Fields()(0).Value().toText();
            altrove(pick("KILL ", "SELECT pg_terminate_backend(") + id + pick("", ")"));
        }
    }

    // --- what the operator sees ---
    // In Italian, without what only drivers say of themselves, without a password.
    void esamina(const std::string& testo) const {
        EXPECT_EQ(testo.find("]["), std::string::npos) << testo;
        EXPECT_EQ(testo.find("[unixODBC"), std::string::npos) << testo;
        EXPECT_EQ(testo.find(adodb::TestServer::password), std::string::npos) << testo;
        EXPECT_EQ(testo.find("PWD"), std::string::npos) << testo;
    }
    bool dettoAlmeno(std::size_t quanti) {
        return robot.waitUntil([&] { return boxes.shown().size() >= quanti; }, 60000);
    }
    void aggiorna() { robot.click(*finestra().BarraBase, pulsante("Aggiorna")); }
    // A refresh after another program has added the row 31.
    void aggiornaConUnaInPiu() {
        altrove("INSERT INTO clienti VALUES (31, 'Cliente 31', 'Bari')");
        aggiorna();
        EXPECT_TRUE(righeArrivano(righeTabella + 1));
    }
    bool righeArrivano(adodb::RowCount quante) {
        return robot.waitUntil(
            [&] {
                return righe().RecordCount() == quante && righe().State() == adodb::adStateOpen;
            },
            60000);
    }
    void apreLista(int colonna) {
        premiPulsante(colonna);
        EXPECT_TRUE(lista().IsShown());
    }
    static bool listaNonRiuscita() { return lista().Note() == "Lettura dei valori non riuscita"; }
    bool listaArriva(std::size_t quante) {
        return robot.waitUntil([&] { return voci().size() == quante; }, 60000);
    }
    // The rows on show serve on: filter, order, filter off. The highest code is first afterwards.
    void usaLeRighe() {
        const adodb::RowCount prima = righe().RecordCount();
        scrivi(Citta, "m\n");
        EXPECT_TRUE(robot.waitUntil([] { return stato() == "Record selezionati 10"; })) << stato();
        clicIntestazione(Codice);
        clicIntestazione(Codice);
        EXPECT_EQ(griglia().CellText(0, Codice), "30");
        entra(Citta);
        robot.press('A', wxMOD_CONTROL);
        robot.press(WXK_DELETE);
        robot.press(WXK_RETURN);
        EXPECT_TRUE(robot.waitUntil([&] { return righe().RecordCount() == prima; }));
        EXPECT_EQ(griglia().CellText(0, Codice), std::to_string(prima));
    }
    // One search over these rows, in which the operator does this, and then chooses the nth row on
    // show with Enter.
    void cercaSu(adodb::RecordsetRef rs, const std::function<void()>& passo, int riga) {
        apriViste();
        pronta();
        intero("prova", passo);
        script.then("sceglie", [this, riga] {
            robot.click(griglia(), cella(riga));
            robot.press(WXK_RETURN);
        });
        cerca(std::move(rs));
    }

    adodb::ConnectionRef amministra; // another program's connection
    adodb::ConnectionRef altro;      // and one that locks

  private:
    static constexpr const char* sveglia = "UPDATE pausa SET secondi = 0";
};

#define SU_SERVER(gruppo)                                                                          \
    INSTANTIATE_TEST_SUITE_P(, gruppo, testing::ValuesIn(adodb::serverNames()),                    \
                             [](const auto& uno) { return uno.param; })

} // namespace norvel::search_window
