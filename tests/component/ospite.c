/* A host in C: the interface's header must compile as C, and everything must be reachable from it.
 */
#include "tests/component/ospite.h"

#include <NorvelRicerca/NorvelRicerca.h>
#include <string.h>

#define ATTESO(condition)                                                                          \
    if (!(condition)) return __LINE__

/* Whether a property reads as the text; frees what it read. */
static int si_legge(nr_ricerca* search, const char* property, const char* expected) {
    char* text = nr_get_text(search, property);
    const int same = text != NULL && strcmp(text, expected) == 0;
    nr_free_text(text);
    return same;
}

int ospite_versione(void) {
    ATTESO(nr_abi() >= NR_ABI);
    ATTESO(strcmp(nr_version(), "1.0.94") == 0);
    return 0;
}

int ospite_proprieta(void) {
    int flag = 7;
    int64_t whole = 7;
    double number = 7;
    nr_ricerca* search = nr_ricerca_create();
    ATTESO(search != NULL);
    ATTESO(nr_put_text(search, "Caption", "Ricerca città") == NR_OK);
    ATTESO(si_legge(search, "CAPTION", "Ricerca città"));
    ATTESO(nr_put_text(search, "Caption", NULL) == NR_OK);
    ATTESO(si_legge(search, "Caption", ""));
    ATTESO(nr_put_text(search, "Caption", "citt\xE0") == NR_OK);
    ATTESO(si_legge(search, "Caption", "città"));
    ATTESO(nr_put_integer(search, "Width", 9000) == NR_OK);
    ATTESO(si_legge(search, "Width", "9000"));
    ATTESO(nr_get_integer(search, "Width", &whole) == NR_OK && whole == 9000);
    ATTESO(nr_put_number(search, "Height", 6000.5) == NR_OK);
    ATTESO(si_legge(search, "Height", "6000,5"));
    ATTESO(nr_get_number(search, "Height", &number) == NR_OK && number == 6000.5);
    ATTESO(nr_get_integer(search, "Height", &whole) == NR_OK && whole == 6000);
    ATTESO(nr_put_boolean(search, "SoloRicerca", 5) == NR_OK);
    ATTESO(nr_get_boolean(search, "SoloRicerca", &flag) == NR_OK && flag == 1);
    ATTESO(si_legge(search, "SoloRicerca", "True"));
    ATTESO(nr_put_text(search, "SoloRicerca", "0") == NR_OK);
    ATTESO(nr_get_boolean(search, "SoloRicerca", &flag) == NR_OK && flag == 0);
    ATTESO(si_legge(search, "Ver", "1.000.094"));
    ATTESO(nr_ricerca_release(search) == NR_OK);
    return 0;
}

int ospite_ricerca(void) {
    const char* fields[] = {"codiceutente", "ricerchepers"};
    nr_recordset* operators = nr_recordset_create(fields, 2);
    nr_ricerca* search = nr_ricerca_create();
    ATTESO(operators != NULL);
    ATTESO(nr_putref(search, "RecordsetOperatori", operators) == NR_OK);
    ATTESO(nr_recordset_release(operators) == NR_OK);
    ATTESO(nr_call(search, "Ricerca") == NR_OK);
    ATTESO(si_legge(search, "Risposta", "4711"));
    ATTESO(nr_call(search, "abilitaCombo") == NR_OK);
    ATTESO(nr_putref(search, "RecordsetOperatori", NULL) == NR_OK);
    ATTESO(nr_ricerca_release(search) == NR_OK);
    return 0;
}

int ospite_recordset(const char* connection_string, const char* missing_connection_string) {
    nr_connection* connection;
    nr_recordset* rows = nr_recordset_open(connection_string, "SELECT 1 AS codice UNION SELECT 2",
                                           NR_LOCK_READ_ONLY, NR_OPTIONS_NONE);
    ATTESO(rows != NULL);
    ATTESO(nr_recordset_count(rows) == 2);
    ATTESO(nr_recordset_release(rows) == NR_OK);

    connection = nr_connection_open(connection_string);
    ATTESO(connection != NULL);
    rows = nr_recordset_open_on(connection, "SELECT 3 AS codice", NR_LOCK_OPTIMISTIC,
                                NR_FETCH_BACKGROUND);
    ATTESO(rows != NULL);
    ATTESO(nr_connection_release(connection) == NR_OK);
    ATTESO(nr_recordset_count(rows) == 1);
    ATTESO(nr_recordset_release(rows) == NR_OK);

    ATTESO(nr_recordset_open(connection_string, "SELEC 1", NR_LOCK_READ_ONLY, -1) == NULL);
    ATTESO(nr_last_error_number() != 0 && nr_last_error_text()[0] != '\0');
    ATTESO(nr_recordset_open(missing_connection_string, "SELECT 1", NR_LOCK_READ_ONLY, -1) == NULL);
    ATTESO(nr_last_error_number() != 0 && nr_last_error_text()[0] != '\0');
    ATTESO(nr_connection_open(missing_connection_string) == NULL);
    ATTESO(nr_last_error_number() != 0);
    ATTESO(nr_connection_open("") == NULL);
    ATTESO(nr_last_error_number() != 0);
    return 0;
}

int ospite_nulli(void) {
    const char* fields[] = {"a", NULL};
    int flag = 7;
    int64_t whole = 7;
    double number = 7;
    nr_ricerca* search = nr_ricerca_create();
    ATTESO(nr_put_text(NULL, "Caption", "x") == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_put_boolean(NULL, "SoloRicerca", 1) == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_put_integer(NULL, "Top", 1) == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_put_number(NULL, "Top", 1) == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_putref(NULL, "Recordset", NULL) == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_get_text(NULL, "Caption") == NULL && nr_last_error_number() == 91);
    ATTESO(nr_get_boolean(NULL, "SoloRicerca", &flag) == NR_ERROR && flag == 7);
    ATTESO(nr_get_integer(NULL, "Top", &whole) == NR_ERROR && whole == 7);
    ATTESO(nr_get_number(NULL, "Top", &number) == NR_ERROR && number == 7);
    ATTESO(nr_call(NULL, "Ricerca") == NR_ERROR && nr_last_error_number() == 91);
    ATTESO(nr_recordset_count(NULL) == -1 && nr_last_error_number() == 91);
    ATTESO(nr_recordset_open_on(NULL, "SELECT 1", NR_LOCK_READ_ONLY, -1) == NULL);
    ATTESO(nr_last_error_number() == 91);

    ATTESO(nr_put_text(search, NULL, "x") == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_get_text(search, NULL) == NULL && nr_last_error_number() == 5);
    ATTESO(nr_putref(search, NULL, NULL) == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_call(search, NULL) == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_get_boolean(search, "SoloRicerca", NULL) == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_get_integer(search, "Top", NULL) == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_get_number(search, "Top", NULL) == NR_ERROR && nr_last_error_number() == 5);
    ATTESO(nr_connection_open(NULL) == NULL && nr_last_error_number() == 5);
    ATTESO(nr_recordset_open(NULL, "SELECT 1", NR_LOCK_READ_ONLY, -1) == NULL);
    ATTESO(nr_last_error_number() == 5);
    ATTESO(nr_recordset_open("Provider=SQLite;Data Source=:memory:", NULL, 1, -1) == NULL);
    ATTESO(nr_last_error_number() == 5);
    ATTESO(nr_recordset_create(NULL, 1) == NULL && nr_last_error_number() == 5);
    ATTESO(nr_recordset_create(fields, 2) == NULL && nr_last_error_number() == 5);
    ATTESO(nr_recordset_create(fields, 0) == NULL && nr_last_error_number() == 3001);

    ATTESO(nr_ricerca_release(NULL) == NR_OK);
    ATTESO(nr_recordset_release(NULL) == NR_OK);
    ATTESO(nr_connection_release(NULL) == NR_OK);
    nr_free_text(NULL);
    ATTESO(nr_ricerca_release(search) == NR_OK);
    return 0;
}

int ospite_maniglie_sbagliate(void) {
    int local = 0;
    const char* fields[] = {"a"};
    nr_recordset* rows = nr_recordset_create(fields, 1);
    nr_ricerca* search = nr_ricerca_create();
    nr_ricerca* released = nr_ricerca_create();
    ATTESO(nr_ricerca_release(released) == NR_OK);

    /* released already */
    ATTESO(nr_put_text(released, "Caption", "x") == NR_ERROR && nr_last_error_number() == 424);
    ATTESO(nr_ricerca_release(released) == NR_ERROR && nr_last_error_number() == 424);
    /* of another kind */
    ATTESO(nr_call((nr_ricerca*)(void*)rows, "Ricerca") == NR_ERROR);
    ATTESO(nr_last_error_number() == 424);
    ATTESO(nr_ricerca_release((nr_ricerca*)(void*)rows) == NR_ERROR);
    ATTESO(nr_putref(search, "Recordset", (nr_recordset*)(void*)search) == NR_ERROR);
    ATTESO(nr_last_error_number() == 424);
    /* no handle at all */
    ATTESO(nr_get_text((nr_ricerca*)(void*)&local, "Caption") == NULL);
    ATTESO(nr_last_error_number() == 424);
    ATTESO(nr_recordset_count((nr_recordset*)(void*)&local) == -1);
    ATTESO(nr_connection_release((nr_connection*)(void*)&local) == NR_ERROR);

    ATTESO(nr_recordset_count(rows) == 0);
    ATTESO(nr_recordset_release(rows) == NR_OK);
    ATTESO(nr_putref(search, "Recordset", rows) == NR_ERROR && nr_last_error_number() == 424);
    ATTESO(nr_ricerca_release(search) == NR_OK);
    return 0;
}

int ospite_errori(void) {
    int flag = 0;
    int64_t whole = 7;
    nr_ricerca* search = nr_ricerca_create();
    ATTESO(nr_last_error_number() == 0 && strcmp(nr_last_error_text(), "") == 0);
    ATTESO(nr_put_text(search, "Colore", "rosso") == NR_ERROR);
    ATTESO(nr_last_error_number() == 438);
    ATTESO(strcmp(nr_last_error_text(), "Proprietà o metodo non supportati dall'oggetto") == 0);
    ATTESO(nr_last_error_number() == 438); /* reading it leaves it */
    ATTESO(nr_put_text(search, "Top", "pippo") == NR_OK);
    ATTESO(nr_last_error_number() == 0 && strcmp(nr_last_error_text(), "") == 0);
    ATTESO(nr_get_integer(search, "Top", &whole) == NR_ERROR && whole == 7);
    ATTESO(nr_last_error_number() == 13);
    ATTESO(nr_get_boolean(search, "Top", &flag) == NR_ERROR && nr_last_error_number() == 13);
    ATTESO(nr_put_text(search, "SoloRicerca", "forse") == NR_ERROR);
    ATTESO(nr_last_error_number() == 13);
    ATTESO(nr_put_text(search, "Risposta", "x") == NR_ERROR && nr_last_error_number() == 438);
    ATTESO(nr_get_text(search, "QueryBase") == NULL && nr_last_error_number() == 438);
    ATTESO(nr_put_text(search, "Recordset", "x") == NR_ERROR && nr_last_error_number() == 438);
    ATTESO(nr_putref(search, "Caption", NULL) == NR_ERROR && nr_last_error_number() == 438);
    ATTESO(nr_call(search, "Caption") == NR_ERROR && nr_last_error_number() == 438);
    ATTESO(nr_call(search, "") == NR_ERROR && nr_last_error_number() == 438);
    ATTESO(nr_ricerca_release(search) == NR_OK);
    return 0;
}

int ospite_tabella(void) {
    size_t place;
    int kinds = 0;
    ATTESO(nr_member_count() == 25);
    for (place = 0; place < nr_member_count(); ++place) {
        ATTESO(nr_member_name(place) != NULL && nr_member_id(place) != 0);
        kinds |= nr_member_kinds(place);
    }
    ATTESO(kinds == (NR_MEMBER_METHOD | NR_MEMBER_GET | NR_MEMBER_PUT | NR_MEMBER_PUTREF));
    ATTESO(strcmp(nr_member_name(0), "PercorsoPers") == 0 && nr_member_id(0) == 0x68030011);
    ATTESO(strcmp(nr_member_name(24), "Ver") == 0 && nr_member_kinds(24) == NR_MEMBER_GET);
    ATTESO(nr_member_name(25) == NULL && nr_last_error_number() == 5);
    ATTESO(nr_member_id(25) == 0 && nr_member_kinds((size_t)-1) == 0);
    return 0;
}
