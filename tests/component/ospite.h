/* What a host written in C does with the C interface. Each function gives 0, or the number of the
 * first line of ospite.c whose expectation did not hold. */
#ifndef TESTS_COMPONENT_OSPITE_H
#define TESTS_COMPONENT_OSPITE_H

#ifdef __cplusplus
extern "C" {
#endif

int ospite_versione(void);
int ospite_proprieta(void);
int ospite_ricerca(void);
int ospite_recordset(const char* connection_string, const char* missing_connection_string);
int ospite_nulli(void);
int ospite_maniglie_sbagliate(void);
int ospite_errori(void);
int ospite_tabella(void);

#ifdef __cplusplus
}
#endif

#endif
