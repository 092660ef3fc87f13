"""Runs the program norvelricerca as an operator does: a command line, keys, what it writes, how it ends.

NORVELRICERCA names the program. Windows are found by their title on the display of the test.
"""

import os
import sqlite3
import subprocess
import tempfile
import time
import unittest

CAPTION = "Ricerca di prova"
WAIT = 60  # seconds that anything may take on a busy machine


def wait_until(condition, what):
    """Looks at condition until it is true, and gives its value; a failure names what was waited for."""
    end = time.monotonic() + WAIT
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"{WAIT} s are over: {what}")


def windows(title):
    """Identifiers of the visible windows with exactly that title."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
                           capture_output=True, text=True, check=False)
    return found.stdout.split()


def press(*keys):
    subprocess.run(["xdotool", "key", *keys], check=True)


class Run:
    """One run of the program."""

    def __init__(self, arguments, environment=None, output=None):
        """output: a file that takes the standard output, for one that the test does not read."""
        self.out = tempfile.TemporaryFile()
        self.err = tempfile.TemporaryFile()
        self.process = subprocess.Popen([os.environ["NORVELRICERCA"], *arguments], stdout=output or self.out,
                                        stderr=self.err, stdin=subprocess.DEVNULL, env=environment)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.out.close()
        self.err.close()

    def ended(self):
        return self.process.poll() is not None

    def window(self, title=CAPTION):
        """Waits for a window of that title to be there and active."""
        def shown():
            if self.ended():
                raise AssertionError(f"no window '{title}': the program ended with "
                                     f"{self.process.returncode}: {self.errors()}")
            return windows(title)
        found = wait_until(shown, f"no window '{title}'; {self.errors()}")
        subprocess.run(["xdotool", "windowactivate", "--sync", found[-1]], check=True, capture_output=True)
        return found[-1]

    def ready(self, title=CAPTION):
        """Waits for the search window and for the half second after which it takes Enter."""
        self.window(title)
        time.sleep(0.7)

    def end(self):
        """Waits for the program's end; its exit status."""
        try:
            return self.process.wait(timeout=WAIT)
        except subprocess.TimeoutExpired:
            shown = "is still" if windows(CAPTION) else "is no longer"
            raise AssertionError(f"{WAIT} s are over: the program has not ended, its window {shown} shown; "
                                 f"{self.errors()}") from None

    def answer(self):
        """What stands on the standard output."""
        return self._read(self.out)

    def errors(self):
        return self._read(self.err)

    @staticmethod
    def _read(file):
        file.seek(0)
        return file.read().decode("utf-8")


class ProgramTest(unittest.TestCase):
    """A test with a folder and a database of its own, removed afterwards."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.database = os.path.join(self.folder, "prova.db")

    def make(self, *statements, rows=None):
        """Makes the database; rows: an INSERT statement and the values of its rows."""
        connection = sqlite3.connect(self.database)
        with connection:
            for statement in statements:
                connection.execute(statement)
            if rows:
                connection.executemany(*rows)
        connection.close()

    def make_people(self, count=5):
        self.make("CREATE TABLE persone (codice INTEGER PRIMARY KEY, nome TEXT)",
                  rows=("INSERT INTO persone VALUES (?, ?)",
                        [(n, f"Persona {n}") for n in range(1, count + 1)]))

    def arguments(self, *more, query="SELECT * FROM persone", field="codice"):
        return ["--connessione", f"Provider=SQLite;Data Source={self.database}", "--QueryBase", query,
                "--CampoRicerca", field, "--Caption", CAPTION, "--WindowsState", "1", "--StatusBar", "1",
                *more]

    def start(self, *more, environment=None, output=None, **search):
        run = Run(self.arguments(*more, **search), environment, output)
        self.addCleanup(run.__exit__)
        return run

    def assert_ends(self, run, status, answer=""):
        self.assertEqual((run.end(), run.answer()), (status, answer), run.errors())

    def assert_refused(self, run, *phrases):
        """The program ends with status 2, nothing on the output, and a message that holds the phrases."""
        self.assert_ends(run, 2)
        message = run.errors()
        self.assertTrue(message.startswith("norvelricerca: "), message)
        for phrase in phrases:
            self.assertIn(phrase, message)
