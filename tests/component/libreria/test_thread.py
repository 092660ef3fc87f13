"""The shared library called from several threads of one host, with its real window."""

import os
import sqlite3
import subprocess
import sys
import tempfile
import unittest

from programma import Run, press

TITLE = "Ricerca in due"

# A host that searches on its first thread, tries a second one meanwhile, then searches on a third. It writes a
# line for each result; a line on its input makes it try.
HOST = r"""
import importlib.util, locale, os, sys, threading
specification = importlib.util.spec_from_file_location("cerca", sys.argv[1])
cerca = importlib.util.module_from_spec(specification)
specification.loader.exec_module(cerca)
locale.setlocale(locale.LC_ALL, "C")
search = cerca.Ricerca()
search.Caption = sys.argv[3]
search.WindowsState, search.CampoRicerca = 1, "codice"
search.give("RecordsetOperatori", cerca.no_rows("codiceutente", "ricerchepers"))
search.give("RecordsetViste", cerca.no_rows("codiceoperatore", "codicericerca", "NomeVista", "preferito"))
search.give("Recordset", cerca.open_rows("Provider=SQLite;Data Source=" + sys.argv[2], "SELECT * FROM righe"))

def try_meanwhile():
    sys.stdin.readline()
    try:
        search.search()
        print("aperta", flush=True)
    except cerca.Errore as error:
        print(error, flush=True)

def search_and_print():
    search.search()
    print(search.Risposta, flush=True)

second = threading.Thread(target=try_meanwhile)
second.start()
search_and_print()
second.join()
third = threading.Thread(target=search_and_print)
third.start()
third.join()
print(locale.setlocale(locale.LC_ALL), flush=True)
search.__exit__()
"""


class Thread(unittest.TestCase):
    def test_a_second_thread_is_refused_while_the_window_is_open_and_served_afterwards(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        database = os.path.join(folder.name, "prova.db")
        connection = sqlite3.connect(database)
        with connection:
            connection.execute("CREATE TABLE righe (codice INTEGER PRIMARY KEY)")
            connection.executemany("INSERT INTO righe VALUES (?)", [(number,) for number in range(1, 9)])
        connection.close()

        host = subprocess.Popen(
            [sys.executable, "-c", HOST, os.path.join(os.environ["NR_SOURCE"], "hosts", "esempi", "cerca.py"),
             database, TITLE], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            text=True, env={**os.environ, "LC_ALL": "C.UTF-8",
                            "NORVELRICERCA_LIBRARY": os.environ["NR_LIBRARY"]})
        self.addCleanup(lambda: (host.kill(), host.communicate()))
        window = OnScreen(host)
        window.ready(TITLE)
        host.stdin.write("\n")
        host.stdin.flush()
        self.assertEqual(host.stdout.readline(), "430 - La finestra di ricerca è aperta in un altro thread\n")
        press("Down", "Return")
        self.assertEqual(host.stdout.readline(), "2\n")
        window.ready(TITLE)
        press("Down", "Down", "Return")
        self.assertEqual(host.stdout.readline(), "4\n", "from where the first search left the rows")
        self.assertEqual(host.stdout.readline(), "C\n", "the host's locale is as it was")
        self.assertEqual((host.wait(timeout=60), host.stderr.read()), (0, ""))


class OnScreen(Run):
    """The windows of a process that was started already."""

    def __init__(self, process):  # pylint: disable=super-init-not-called
        self.process = process

    def errors(self):
        return ""


if __name__ == "__main__":
    unittest.main()
