"""The example hosts over a real database, driven by keys."""

import os
import sqlite3
import subprocess
import tempfile
import unittest
from unittest import mock

from programma import Run, press

ESEMPI = os.environ["NR_ESEMPI"]
PYTHON_HOST = os.path.join(os.environ["NR_SOURCE"], "hosts", "esempi", "cerca.py")
TITLE = "Ricerca in persone"


class Esempi(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.database = os.path.join(folder.name, "prova è.db")
        connection = sqlite3.connect(self.database)
        with connection:
            connection.execute("CREATE TABLE persone (codice INTEGER PRIMARY KEY, nome TEXT)")
            connection.executemany("INSERT INTO persone VALUES (?, ?)",
                                   [(number, f"Nicolò {number}") for number in range(1, 1001)])
        connection.close()

    def start(self, command, environment=None):
        library = {"NORVELRICERCA_LIBRARY": os.environ["NR_LIBRARY"]}
        with mock.patch.dict(os.environ, {"NORVELRICERCA": command[0]}):
            run = Run(command[1:], {**(environment or os.environ), **library})
        self.addCleanup(run.__exit__)
        return run

    def choose(self, command):
        """Opens the window over the names, takes the third row, and gives what the host printed."""
        run = self.start([*command, self.database, "persone", "nome"])
        run.ready(TITLE)
        press("Down", "Down", "Return")
        return run.end(), run.answer(), run.errors()

    def close(self, command):
        run = self.start([*command, self.database, "persone", "nome"])
        run.ready(TITLE)
        press("alt+F4")
        return run.end(), run.answer(), run.errors()

    def refuse(self, *command):
        """The host's messages for a table that is not there, a missing database, a missing display."""
        messages = []
        for arguments in ((self.database, "nessuna"), (self.database + ".no", "persone")):
            run = self.start([*command, *arguments])
            self.assertEqual((run.end(), run.answer()), (2, ""), run.errors())
            messages.append(run.errors())
        without_display = {name: value for name, value in os.environ.items()
                           if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        run = self.start([*command, self.database, "persone", "nome"], without_display)
        self.assertEqual((run.end(), run.answer()), (1, ""), run.errors())
        messages.append(run.errors())
        return messages

    def assert_refuses(self, *command):
        table, database, display = self.refuse(*command)
        self.assertRegex(table, r"\d+ - .*nessuna")
        self.assertRegex(database, r"\d+ - \w")
        self.assertIn("Errore nella funzione NorvelRicerca.Ricerca", display)

    def test_cpp_prints_the_row_chosen(self):
        self.assertEqual(self.choose([os.path.join(ESEMPI, "esempio_cpp")]), (0, "Nicolò 3\n", ""))

    def test_c_prints_the_row_chosen(self):
        self.assertEqual(self.choose([os.path.join(ESEMPI, "esempio_c")]), (0, "Nicolò 3\n", ""))

    def test_python_prints_the_row_chosen(self):
        self.assertEqual(self.choose(["/usr/bin/python3", PYTHON_HOST]), (0, "Nicolò 3\n", ""))

    def test_cpp_prints_nothing_when_the_window_is_closed(self):
        self.assertEqual(self.close([os.path.join(ESEMPI, "esempio_cpp")]), (1, "", ""))

    def test_c_prints_nothing_when_the_window_is_closed(self):
        self.assertEqual(self.close([os.path.join(ESEMPI, "esempio_c")]), (1, "", ""))

    def test_python_prints_nothing_when_the_window_is_closed(self):
        self.assertEqual(self.close(["/usr/bin/python3", PYTHON_HOST]), (1, "", ""))

    def test_cpp_says_what_it_misses(self):
        self.assert_refuses(os.path.join(ESEMPI, "esempio_cpp"))

    def test_c_says_what_it_misses(self):
        self.assert_refuses(os.path.join(ESEMPI, "esempio_c"))

    def test_python_says_what_it_misses(self):
        self.assert_refuses("/usr/bin/python3", PYTHON_HOST)

    def test_usage_is_told(self):
        for command in ([os.path.join(ESEMPI, "esempio_cpp")], [os.path.join(ESEMPI, "esempio_c")],
                        ["/usr/bin/python3", PYTHON_HOST]):
            done = subprocess.run(command, capture_output=True, text=True, check=False,
                                  env={**os.environ, "NORVELRICERCA_LIBRARY": os.environ["NR_LIBRARY"]})
            self.assertEqual(done.returncode, 2)
            self.assertIn("DATABASE [TABLE [FIELD]]", done.stderr)


if __name__ == "__main__":
    unittest.main()
