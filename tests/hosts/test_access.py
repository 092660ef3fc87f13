"""The program over an Access file: one that Access 97 wrote, as packaging/prepara unpacks it."""

import gzip
import os

from programma import CAPTION, ProgramTest, press

EXAMPLE = os.path.join(os.path.dirname(__file__), "../../build/examples/fp-units-db-3.2.2/usr/share/doc",
                       "fp-units-db/3.2.2/examples/odbc/testodbc.mdb.gz")


class AccessFile(ProgramTest):
    def setUp(self):
        super().setUp()
        self.assertTrue(os.path.exists(EXAMPLE), "run packaging/prepara test first")
        self.database = os.path.join(self.folder, "testodbc.mdb")
        with gzip.open(EXAMPLE) as packed, open(self.database, "wb") as file:
            file.write(packed.read())

    def arguments(self, *more, query="SELECT * FROM FPdev ORDER BY id", field="id"):
        return ["--connessione", f"Provider=Microsoft.Jet.OLEDB.4.0;Data Source={self.database}", "--QueryBase", query,
                "--CampoRicerca", field, "--Caption", CAPTION, "--WindowsState", "1", "--StatusBar", "1",
                "--FilterBar", "1", *more]

    def test_a_row_is_chosen(self):
        run = self.start()
        run.ready()
        press("Down", "Down", "Return")
        self.assert_ends(run, 0, "3\n")

    def test_a_typed_text_filters(self):
        run = self.start()
        run.ready()
        press("F2", "Tab", "j", "o", "n", "Return", "Down", "Return")
        self.assert_ends(run, 0, "6\n")

    def test_a_file_cut_short_is_told(self):
        os.truncate(self.database, 3000)
        self.assert_refused(self.start(), "testodbc.mdb", "danneggiato o incompleto")
