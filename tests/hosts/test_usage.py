"""Command lines and data that are refused before a window opens: a message, exit status 2, no answer."""

import os
import sqlite3
import subprocess
import unittest

from programma import ProgramTest, Run


class Usage(ProgramTest):
    def refused(self, arguments, *phrases):
        with Run(arguments) as run:
            self.assert_refused(run, *phrases)

    def test_no_arguments_at_all(self):
        self.refused([], "Manca l'opzione obbligatoria --connessione", "norvelricerca --aiuto")

    def test_an_unknown_option(self):
        self.refused(self.arguments("--Captoin", "x"), "Opzione sconosciuta: --Captoin (forse --Caption?)")

    def test_a_missing_value(self):
        self.refused(self.arguments("--Modulo"), "Manca il valore di --Modulo")

    def test_a_property_that_is_only_read(self):
        self.refused(self.arguments("--Risposta", "7"), "--Risposta non si può assegnare")

    def test_a_recordset_property(self):
        self.refused(self.arguments("--RecordsetViste", "x"), "--RecordsetViste non si può assegnare")

    def test_a_method_is_no_option(self):
        self.refused(self.arguments("--abilitaCombo", "1"), "Opzione sconosciuta: --abilitaCombo")

    def test_a_size_that_is_no_number(self):
        self.refused(self.arguments("--Height", "alta"), "--Height vuole un numero, non «alta»")

    def test_help_lists_every_property_on_the_standard_output(self):
        with Run(["--aiuto"]) as run:
            self.assertEqual((run.end(), run.errors()), (0, ""))
            text = run.answer()
        for name in ("connessione", "operatori", "viste", "tempi", "crea-demo", "righe", "versione", "QueryBase",
                     "CampoRicerca", "PercorsoPers", "Percorso", "User", "Modulo", "SoloRicerca", "Caption",
                     "StatusBar", "Toolbar", "Top", "Left", "Height", "Width", "WindowsState",
                     "SelezioneMultipla", "FilterBar", "AbilitaModificaCampi"):
            self.assertIn(f"\n  --{name} ", text)
        self.assertIn("Esempio:", text)
        self.assertLessEqual(max(map(len, text.splitlines())), 90)

    def test_version(self):
        with Run(["--versione"]) as run:
            self.assertEqual(run.end(), 0)
            self.assertRegex(run.answer(), r"^norvelricerca \d+\.\d{3}\.\d{3}\n$")

    def test_help_that_cannot_be_written(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            done = subprocess.run([os.environ["NORVELRICERCA"], "--aiuto"], stdout=full, stderr=subprocess.PIPE,
                                  text=True, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("non si può scrivere", done.stderr)

    def test_no_display(self):
        self.make_people()
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        self.assert_refused(self.start(environment=environment), "schermo")

    def test_a_display_that_does_not_answer(self):
        self.make_people()
        self.assert_refused(self.start(environment={**os.environ, "DISPLAY": ":9999"}), "schermo")


class Connection(ProgramTest):
    def test_a_string_without_a_provider(self):
        with Run(["--connessione", "Data Source=x.db", "--QueryBase", "SELECT 1 AS a",
                  "--CampoRicerca", "a"]) as run:
            self.assert_refused(run, "La connessione non è riuscita", "provider")

    def test_a_provider_that_is_not_there(self):
        with Run(["--connessione", "Provider=Nessuno;Data Source=x.db", "--QueryBase", "SELECT 1 AS a",
                  "--CampoRicerca", "a"]) as run:
            self.assert_refused(run, "La connessione non è riuscita", "Nessuno")

    def test_a_missing_database_is_told_and_not_made(self):
        self.assert_refused(self.start(), "La connessione non è riuscita", "prova.db» non esiste")
        self.assertEqual(os.listdir(self.folder), [])

    def test_a_file_that_is_no_database(self):
        with open(self.database, "w", encoding="utf-8") as file:
            file.write("Caro diario, oggi piove. " * 100)
        self.assert_refused(self.start(), "prova.db» non è un database")

    def test_a_truncated_database(self):
        self.make_people(2000)
        os.truncate(self.database, 4096 + 100)
        self.assert_refused(self.start(), "danneggiato o incompleto")

    def test_a_locked_database(self):
        self.make_people()
        other = sqlite3.connect(self.database, isolation_level=None)
        self.addCleanup(other.close)
        other.execute("PRAGMA locking_mode=EXCLUSIVE")
        other.execute("BEGIN EXCLUSIVE")
        self.assert_refused(self.start(), "prova.db» è bloccato da un altro programma")


class Query(ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_people()

    def test_a_mistake_in_the_statement(self):
        self.assert_refused(self.start(query="SELEZIONA * DA persone"), "--QueryBase non è riuscita", "SELEZIONA")

    def test_a_table_that_is_not_there(self):
        self.assert_refused(self.start(query="SELECT * FROM assente"), "--QueryBase non è riuscita", "assente")

    def test_a_statement_without_columns(self):
        self.assert_refused(self.start(query="CREATE TEMP TABLE x (a)"), "non dà righe")

    def test_a_field_that_the_query_does_not_have(self):
        self.assert_refused(self.start(field="codcie"),
                            "la query non ha il campo «codcie» (ha: codice, nome)")

    def test_a_field_missing_among_very_many_names_the_first_only(self):
        query = "SELECT " + ", ".join(f"{n} AS c{n}" for n in range(1000))
        run = self.start(query=query, field="x")
        self.assert_refused(run, "(ha: c0, c1, c2")
        self.assertLess(len(run.errors()), 300)

    def test_a_mistake_in_the_operators_statement(self):
        self.assert_refused(self.start("--operatori", "SELECT * FROM x"), "--operatori non è riuscita")

    def test_operators_without_their_fields(self):
        self.assert_refused(self.start("--operatori", "SELECT codice AS codiceutente FROM persone"),
                            "--operatori non ha il campo «ricerchepers» (ha: codiceutente)")

    def test_views_without_their_fields(self):
        self.assert_refused(self.start("--viste", "SELECT * FROM persone"),
                            "--viste non ha il campo «codiceoperatore»")


class SampleDatabase(ProgramTest):
    def make_sample(self, *arguments):
        with Run(["--crea-demo", self.database, *arguments]) as run:
            return run.end(), run.answer(), run.errors()

    def rows(self):
        connection = sqlite3.connect(self.database)
        count = connection.execute("SELECT count(*) FROM clienti").fetchone()[0]
        connection.close()
        return count

    def test_is_made_with_the_rows_asked_for(self):
        self.assertEqual(self.make_sample("--righe", "250"), (0, "", ""))
        self.assertEqual(self.rows(), 250)

    def test_is_the_same_every_time(self):
        self.make_sample("--righe", "100")
        with open(self.database, "rb") as file:
            first = file.read()
        self.make_sample("--righe", "100")
        with open(self.database, "rb") as file:
            self.assertEqual(file.read(), first)

    def test_another_database_is_not_replaced(self):
        self.make_people()
        status, answer, message = self.make_sample()
        self.assertEqual((status, answer), (2, ""))
        self.assertIn("non viene sovrascritto", message)
        connection = sqlite3.connect(self.database)
        self.addCleanup(connection.close)
        self.assertEqual(connection.execute("SELECT count(*) FROM persone").fetchone(), (5,))

    def test_a_folder_that_is_not_there(self):
        with Run(["--crea-demo", os.path.join(self.folder, "assente", "x.db"), "--righe", "1"]) as run:
            self.assert_refused(run, "demo")


if __name__ == "__main__":
    unittest.main()
