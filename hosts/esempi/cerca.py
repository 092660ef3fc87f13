#!/usr/bin/env python3
"""A host in Python: opens the search over a table of an SQLite database and prints the chosen value.

    cerca.py DATABASE [TABLE [FIELD]]

Exit status: 0 a row was chosen, 1 none was, 2 the data could not be opened. The library is found by the
system's loader, or taken from the environment variable NORVELRICERCA_LIBRARY.
"""
import ctypes
import os
import sys

HANDLE, TEXT = ctypes.c_void_p, ctypes.c_char_p
LOCK_READ_ONLY, FETCH_BACKGROUND, FETCH_NON_BLOCKING = 1, 0x20, 0x40


def load():
    """The library, with the types of the functions that this host calls."""
    lib = ctypes.CDLL(os.environ.get("NORVELRICERCA_LIBRARY", "libNorvelRicerca.so.1"))
    for name, result, *arguments in (
            ("nr_last_error_number", ctypes.c_int64),
            ("nr_last_error_text", TEXT),
            ("nr_ricerca_create", HANDLE),
            ("nr_ricerca_release", ctypes.c_int, HANDLE),
            ("nr_put_text", ctypes.c_int, HANDLE, TEXT, TEXT),
            ("nr_putref", ctypes.c_int, HANDLE, TEXT, HANDLE),
            ("nr_get_text", HANDLE, HANDLE, TEXT),
            ("nr_free_text", None, HANDLE),
            ("nr_call", ctypes.c_int, HANDLE, TEXT),
            ("nr_recordset_open", HANDLE, TEXT, TEXT, ctypes.c_int, ctypes.c_int),
            ("nr_recordset_create", HANDLE, ctypes.POINTER(TEXT), ctypes.c_size_t),
            ("nr_recordset_release", ctypes.c_int, HANDLE)):
        function = getattr(lib, name)
        function.restype, function.argtypes = result, arguments
    return lib


lib = load()


class Errore(Exception):
    """What the library says of the call that failed."""

    def __init__(self):
        super().__init__(f"{lib.nr_last_error_number()} - {lib.nr_last_error_text().decode()}")


def check(done):
    """The answer of a function that gives 0 where it succeeded."""
    if done != 0:
        raise Errore()


def handle(value):
    """The answer of a function that gives a pointer."""
    if not value:
        raise Errore()
    return value


def open_rows(connection, sql):
    """The rows of a statement; those that do not come at once follow while the window is open."""
    return handle(lib.nr_recordset_open(connection.encode(), sql.encode(), LOCK_READ_ONLY,
                                        FETCH_BACKGROUND | FETCH_NON_BLOCKING))


def no_rows(*fields):
    """An open recordset without rows."""
    names = (TEXT * len(fields))(*(field.encode() for field in fields))
    return handle(lib.nr_recordset_create(names, len(fields)))


class Ricerca:
    """The search: properties are attributes, recordsets are given with give()."""

    def __init__(self):
        object.__setattr__(self, "_handle", handle(lib.nr_ricerca_create()))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        lib.nr_putref(self._handle, b"Recordset", None)  # closes the rows
        lib.nr_ricerca_release(self._handle)

    def __setattr__(self, name, value):
        check(lib.nr_put_text(self._handle, name.encode(), str(value).encode()))

    def __getattr__(self, name):
        text = handle(lib.nr_get_text(self._handle, name.encode()))
        try:
            return ctypes.string_at(text).decode()
        finally:
            lib.nr_free_text(text)

    def give(self, name, recordset):
        """Sets a recordset property; the search keeps the recordset, the handle goes."""
        try:
            check(lib.nr_putref(self._handle, name.encode(), recordset))
        finally:
            lib.nr_recordset_release(recordset)

    def search(self):
        """Opens the window and returns when it is closed."""
        check(lib.nr_call(self._handle, b"Ricerca"))


def main(database, table="clienti", field="codice"):
    query = f"SELECT * FROM {table}"
    with Ricerca() as search:
        search.Caption = f"Ricerca in {table}"
        search.WindowsState = 1  # centred
        search.StatusBar = 1
        search.FilterBar = 1
        search.CampoRicerca = field  # what is handed back
        search.QueryBase = query
        search.give("RecordsetOperatori", no_rows("codiceutente", "ricerchepers"))
        search.give("RecordsetViste",
                    no_rows("codiceoperatore", "codicericerca", "NomeVista", "preferito"))
        search.give("Recordset", open_rows(f"Provider=SQLite;Data Source={database}", query))
        search.search()
        answer = search.Risposta
    if not answer:
        return 1
    print(answer)
    return 0


if __name__ == "__main__":
    if not 2 <= len(sys.argv) <= 4:
        print(__doc__, file=sys.stderr)
        sys.exit(2)
    try:
        sys.exit(main(*sys.argv[1:]))
    except Errore as error:
        print(f"{sys.argv[0]}: {error}", file=sys.stderr)
        sys.exit(2)
