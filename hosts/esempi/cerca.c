/* A host in C: opens the search over a table of an SQLite database and prints the chosen value.
 *
 *     esempio_c DATABASE [TABLE [FIELD]]
 *
 * Exit status: 0 a row was chosen, 1 none was, 2 the data could not be opened. */
#include <NorvelRicerca/NorvelRicerca.h>
#include <inttypes.h>
#include <stdio.h>

static int failed(const char* program) {
    fprintf(stderr, "%s: %" PRId64 " - %s\n", program, nr_last_error_number(),
            nr_last_error_text());
    return 2;
}

/* Gives the search a recordset and lets the handle go: the search keeps the recordset. */
static int give(nr_ricerca* search, const char* property, nr_recordset* recordset) {
    int done;
    if (recordset == NULL) return NR_ERROR;
    done = nr_putref(search, property, recordset);
    nr_recordset_release(recordset);
    return done;
}

static int set_up(nr_ricerca* search, const char* database, const char* table, const char* field) {
    static const char* const operators[] = {"codiceutente", "ricerchepers"};
    static const char* const views[] = {"codiceoperatore", "codicericerca", "NomeVista",
                                        "preferito"};
    char connection[4200], query[300], caption[300];
    snprintf(connection, sizeof connection, "Provider=SQLite;Data Source=%s", database);
    snprintf(query, sizeof query, "SELECT * FROM %s", table);
    snprintf(caption, sizeof caption, "Ricerca in %s", table);

    return nr_put_text(search, "Caption", caption) == NR_OK &&
                   nr_put_integer(search, "WindowsState", 1) == NR_OK && /* centred */
                   nr_put_integer(search, "StatusBar", 1) == NR_OK &&
                   nr_put_integer(search, "FilterBar", 1) == NR_OK &&
                   nr_put_text(search, "CampoRicerca", field) == NR_OK && /* handed back */
                   nr_put_text(search, "QueryBase", query) == NR_OK &&
                   give(search, "RecordsetOperatori", nr_recordset_create(operators, 2)) == NR_OK &&
                   give(search, "RecordsetViste", nr_recordset_create(views, 4)) == NR_OK &&
                   give(search, "Recordset",
                        nr_recordset_open(connection, query, NR_LOCK_READ_ONLY,
                                          NR_FETCH_BACKGROUND | NR_FETCH_NON_BLOCKING)) == NR_OK
               ? NR_OK
               : NR_ERROR;
}

int main(int argc, char** argv) {
    nr_ricerca* search;
    char* answer = NULL;
    int status = 1;
    if (argc < 2) {
        fprintf(stderr, "usage: %s DATABASE [TABLE [FIELD]]\n", argv[0]);
        return 2;
    }
    search = nr_ricerca_create();
    if (search == NULL) return failed(argv[0]);
    if (set_up(search, argv[1], argc > 2 ? argv[2] : "clienti", argc > 3 ? argv[3] : "codice") !=
            NR_OK ||
        nr_call(search, "Ricerca") != NR_OK || /* returns when the window is closed */
        (answer = nr_get_text(search, "Risposta")) == NULL) {
        status = failed(argv[0]);
    } else if (answer[0] != '\0') {
        puts(answer);
        status = 0;
    }
    nr_free_text(answer);
    nr_putref(search, "Recordset", NULL); /* closes the rows, those still on their way included */
    nr_ricerca_release(search);
    return status;
}
