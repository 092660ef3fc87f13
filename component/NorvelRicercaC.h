/* The C interface: the search component for hosts in C and in every language that can call C.
 *
 *     nr_recordset *rows = nr_recordset_open("Provider=SQLite;Data Source=clienti.db",
 *                                            "SELECT * FROM clienti", NR_LOCK_READ_ONLY,
 *                                            NR_FETCH_BACKGROUND);
 *     nr_ricerca *search = nr_ricerca_create();
 *     nr_putref(search, "Recordset", rows);
 *     nr_put_text(search, "CampoRicerca", "codice");
 *     nr_call(search, "Ricerca");
 *     char *answer = nr_get_text(search, "Risposta");
 *
 * Members go by the names that the public class has in automation, case-blind, the method that
 * opens the window included ("Ricerca"). What each one does and stores is said in
 * component/Ricerca.h.
 *
 * Texts are UTF-8 and end with a NUL; bytes that are not UTF-8 are read as Windows-1252. A NULL
 * text given as a value is the empty text.
 *
 * Failures: a function that gives back an int answers NR_OK or NR_ERROR, one that gives back a
 * pointer answers NULL where it failed; nr_last_error_number and nr_last_error_text then tell why,
 * for the calling thread. No exception ever leaves a function. Beside the numbers of the members
 * themselves there are
 *     5      an argument that must not be NULL is NULL
 *     7      memory ran out
 *     51     an internal error
 *     91     the handle is NULL
 *     424    the handle is none of this kind, or was released already
 *     438    no member of that name, or it cannot be used that way
 *
 * Handles stand for objects; they are never dereferenced, so a handle that is wrong is told from a
 * right one and does no harm. An object lives until its handle is released and nothing else keeps
 * it: a recordset that a search holds outlives its handle.
 *
 * Threads: functions may be called from any thread, one call at a time for one object; the windows
 * live on the thread that calls "Ricerca". While one is open, that call from another thread fails
 * with number 430.
 *
 * The interface is stable: functions are only added, and nr_abi tells how far it has come.
 */
#ifndef NORVELRICERCA_COMPONENT_NORVELRICERCAC_H
#define NORVELRICERCA_COMPONENT_NORVELRICERCAC_H

#include "platform/runtime/Api.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define NR_OK 0
#define NR_ERROR (-1)

/* The interface that this header describes. */
#define NR_ABI 1
/* The interface that the library offers: at least NR_ABI where it can stand in for it. */
NR_API int nr_abi(void);
/* The component's version, "1.0.94"; the text belongs to the library. */
NR_API const char* nr_version(void);

/* --- the last error of the calling thread --- */

/* Number of the error of the thread's last call of this interface; 0 where it succeeded. */
NR_API int64_t nr_last_error_number(void);
/* Its description, Italian; "" where it succeeded. Valid until the thread's next call. */
NR_API const char* nr_last_error_text(void);

/* --- the search --- */

typedef struct nr_ricerca nr_ricerca;
typedef struct nr_recordset nr_recordset;
typedef struct nr_connection nr_connection;

/* A new object of the public class. All objects share the one session of the process. */
NR_API nr_ricerca* nr_ricerca_create(void);
/* Releases the handle; of NULL it does nothing. */
NR_API int nr_ricerca_release(nr_ricerca* search);

/* Sets a property, converted to the property's type as automation converts it: a number put into a
 * text property becomes text (1.5 becomes "1,5"), a text put into a Boolean one is read as a number
 * or as True/False. */
NR_API int nr_put_text(nr_ricerca* search, const char* property, const char* value);
NR_API int nr_put_boolean(nr_ricerca* search, const char* property, int value);
NR_API int nr_put_integer(nr_ricerca* search, const char* property, int64_t value);
NR_API int nr_put_number(nr_ricerca* search, const char* property, double value);
/* Sets an object property ("Recordset", "RecordsetOperatori", "RecordsetViste"); a NULL recordset
 * is Nothing and lets the one that is held go. */
NR_API int nr_putref(nr_ricerca* search, const char* property, nr_recordset* recordset);

/* A property as text, Booleans as "True" or "False". The caller frees it with nr_free_text. */
NR_API char* nr_get_text(nr_ricerca* search, const char* property);
/* A property as a Boolean (0 or 1), a whole number (rounded half to even), a number: stored where
 * value points, which is left as it was on failure. */
NR_API int nr_get_boolean(nr_ricerca* search, const char* property, int* value);
NR_API int nr_get_integer(nr_ricerca* search, const char* property, int64_t* value);
NR_API int nr_get_number(nr_ricerca* search, const char* property, double* value);
/* Frees a text that this interface gave; of NULL it does nothing. It leaves the last error. */
NR_API void nr_free_text(char* text);

/* Calls a method: "Ricerca" opens the window and returns when it is closed, "abilitaCombo" inverts
 * the columns' combo switches. Results are dropped: there is none but the Empty of "Ricerca". */
NR_API int nr_call(nr_ricerca* search, const char* method);

/* --- the member table --- */

/* How a member may be used; bits. */
#define NR_MEMBER_METHOD 1
#define NR_MEMBER_GET 2
#define NR_MEMBER_PUT 4
#define NR_MEMBER_PUTREF 8

/* Number of members; their places, from 0, are the order of the interface. */
NR_API size_t nr_member_count(void);
/* Name of the member at a place; the text belongs to the library. */
NR_API const char* nr_member_name(size_t place);
/* Its dispatch identifier and its NR_MEMBER_ bits; 0 on failure. */
NR_API int32_t nr_member_id(size_t place);
NR_API int nr_member_kinds(size_t place);

/* --- the host's data --- */

#define NR_LOCK_READ_ONLY 1
#define NR_LOCK_OPTIMISTIC 3

/* Options of an open, bits of ADO's ExecuteOptionEnum. NR_FETCH_BACKGROUND hands control back after
 * the first block of rows and brings the rest while the host goes on; a move to rows that have not
 * come yet waits for them, or, with NR_FETCH_NON_BLOCKING beside it, takes those that have come for
 * all there are. A host that shows the window passes both. */
#define NR_OPTIONS_NONE (-1)
#define NR_FETCH_BACKGROUND 0x20
#define NR_FETCH_NON_BLOCKING 0x40

/* Opens a connection. A connection string names its database as in
 * "Provider=SQLite;Data Source=clienti.db". */
NR_API nr_connection* nr_connection_open(const char* connection_string);
/* Releases the handle; of NULL it does nothing. The connection closes once no recordset uses it. */
NR_API int nr_connection_release(nr_connection* connection);

/* Opens the rows of a statement: a client-side, static recordset, on a connection of its own or on
 * one that is open. */
NR_API nr_recordset* nr_recordset_open(const char* connection_string, const char* sql, int lock,
                                       int options);
NR_API nr_recordset* nr_recordset_open_on(nr_connection* connection, const char* sql, int lock,
                                          int options);
/* An open recordset without rows, of count text fields with the names given: what a host passes as
 * operators or views when it has none. */
NR_API nr_recordset* nr_recordset_create(const char* const* field_names, size_t count);
/* Number of rows; while they are still being fetched, of those known so far. -1 on failure. */
NR_API int64_t nr_recordset_count(nr_recordset* recordset);
/* Releases the handle; of NULL it does nothing. */
NR_API int nr_recordset_release(nr_recordset* recordset);

#ifdef __cplusplus
}
#endif

#endif
