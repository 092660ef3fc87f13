"""The program with its window, driven by keys as an operator does."""

import os
import re
import sqlite3
import time
import unittest

from programma import CAPTION, WAIT, ProgramTest, press, wait_until, windows


class Choosing(ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_people(20)

    def test_enter_chooses_the_first_row(self):
        run = self.start()
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")
        self.assertEqual(run.errors(), "")

    def test_arrows_choose_another_row(self):
        run = self.start()
        run.ready()
        press("Down", "Down", "Down", "Up", "Return")
        self.assert_ends(run, 0, "3\n")

    def test_the_field_may_be_any_and_is_case_blind(self):
        run = self.start(field="NOME")
        run.ready()
        press("Down", "Return")
        self.assert_ends(run, 0, "Persona 2\n")

    def test_the_last_row_of_all(self):
        run = self.start()
        run.ready()
        press("ctrl+End", "Return")
        self.assert_ends(run, 0, "20\n")

    def test_closing_the_window_chooses_nothing(self):
        run = self.start()
        run.ready()
        press("alt+F4")
        self.assert_ends(run, 1)

    def test_an_empty_result_leaves_nothing_to_choose(self):
        run = self.start(query="SELECT * FROM persone WHERE codice < 0")
        run.ready()
        press("Return")
        time.sleep(0.5)
        self.assertFalse(run.ended(), "Enter on no row keeps the window")
        press("alt+F4")
        self.assert_ends(run, 1)

    def test_browsing_only(self):
        run = self.start("--SoloRicerca", "True")
        run.ready()
        press("Down", "Return")
        time.sleep(0.5)
        self.assertFalse(run.ended(), "Enter chooses nothing")
        press("alt+F4")
        self.assert_ends(run, 1)

    def test_options_with_an_equals_sign_and_in_any_case(self):
        run = self.start("--caption=Altro titolo", "--FILTERBAR=1")
        run.ready("Altro titolo")
        press("Return")
        self.assert_ends(run, 0, "1\n")

    def test_operators_and_views_of_the_database(self):
        self.make("CREATE TABLE operatori (codiceutente TEXT, ricerchepers BOOLEAN)",
                  "CREATE TABLE ricerchepers (codiceoperatore TEXT, codicericerca TEXT, NomeVista TEXT, "
                  "preferito BOOLEAN)")
        run = self.start("--operatori", "SELECT * FROM operatori", "--viste", "SELECT * FROM ricerchepers",
                         "--User", "mario", "--Modulo", "persone")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")

    def test_fields_that_may_be_edited(self):
        run = self.start("--AbilitaModificaCampi", "nome;codice")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")

    def test_a_window_that_cannot_be_prepared(self):
        run = self.start("--Width", "1E300")  # a number, but none that a window's width can be
        run.window("NorvelRicerca")
        press("Return")
        self.assert_refused(run, "Errore nella funzione NorvelRicerca.Ricerca: 6 - ")

    def test_an_answer_that_cannot_be_written(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            run = self.start(output=full)
            run.ready()
            press("Return")
            self.assertEqual(run.end(), 2)
        self.assertIn("non si può scrivere", run.errors())


class ChoosingSeveral(ProgramTest):
    def setUp(self):
        super().setUp()
        self.make_people(20)

    def start_multiple(self):
        run = self.start("--SelezioneMultipla", "True")
        run.ready()
        return run

    def test_rows_selected_with_the_keyboard(self):
        run = self.start_multiple()
        press("shift+Down", "shift+Down", "Return")
        self.assert_ends(run, 0, "1|2|3|\n")

    def test_all_rows_selected(self):
        run = self.start_multiple()
        press("ctrl+a", "Return")
        self.assert_ends(run, 0, "".join(f"{n}|" for n in range(1, 21)) + "\n")

    def test_nothing_selected_and_yes_gives_every_row(self):
        run = self.start_multiple()
        press("Return")
        run.window("Inserimento")
        press("alt+s")
        self.assert_ends(run, 0, "".join(f"{n}|" for n in range(1, 21)) + "\n")

    def test_nothing_selected_and_no_gives_nothing(self):
        run = self.start_multiple()
        press("Return")
        run.window("Inserimento")
        press("alt+n")
        self.assert_ends(run, 1)


class Values(ProgramTest):
    """What the chosen value may be."""

    def choose(self, value, declared, *more):
        """The run that chose the one row, whose field v holds the value."""
        self.make(f"CREATE TABLE t (k INTEGER PRIMARY KEY, v {declared})", rows=("INSERT INTO t(v) VALUES (?)", [(value,)]))
        run = self.start(*more, query="SELECT * FROM t", field="v")
        run.ready()
        press("Return")
        return run

    def test_a_text_with_accents(self):
        self.assert_ends(self.choose("Nicolò D'Aquì – 5 €", "TEXT"), 0, "Nicolò D'Aquì – 5 €\n")

    def test_a_number_has_a_decimal_comma(self):
        self.assert_ends(self.choose(1234.5, "NUMERIC"), 0, "1234,5\n")

    def test_a_date_is_day_first(self):
        self.assert_ends(self.choose("2024-12-03", "DATE"), 0, "03/12/2024\n")

    def test_a_boolean(self):
        self.assert_ends(self.choose(1, "BOOLEAN"), 0, "True\n")

    def test_a_null_is_no_answer_and_is_told(self):
        run = self.choose(None, "TEXT")
        self.assert_ends(run, 1)
        self.assertEqual(run.errors(), "norvelricerca: la riga scelta non ha un valore per il campo «v»\n")

    def test_an_empty_text_is_no_answer(self):
        self.assert_ends(self.choose("", "TEXT"), 1)

    def test_a_blob_has_no_text(self):
        self.assert_refused(self.choose(b"\x00\x01\xff", "BLOB"), "non si può scrivere come testo (il campo «v»)")

    def test_a_text_that_is_not_utf8(self):
        self.make("CREATE TABLE t (v TEXT)", "INSERT INTO t VALUES (CAST(X'43697474E0' AS TEXT))")
        run = self.start(query="SELECT * FROM t", field="v")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "Città\n")

    def test_a_text_of_ten_megabytes_is_whole(self):
        text = "0123456789" * (1 << 20)
        run = self.choose(text, "TEXT")
        self.assertEqual(run.end(), 0, run.errors())
        self.assertEqual(run.answer(), text + "\n")

    def test_a_thousand_columns(self):
        query = "SELECT " + ", ".join(f"{n} AS c{n}" for n in range(1000))
        self.make("CREATE TABLE t (a)")
        run = self.start(query=query, field="c999")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "999\n")


class Fetching(ProgramTest):
    def test_times_are_a_name_and_a_value_a_line(self):
        self.make_people(30000)
        run = self.start("--tempi")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")
        times = dict(re.fullmatch(r"([a-z_]+): (\d+)", line).groups() for line in run.errors().splitlines())
        self.assertEqual(list(times), ["prima_pittura_ms", "prima_pittura_da_lettura_ms", "righe_lette",
                                       "ultima_riga_ms", "memoria_massima_kb"])
        self.assertEqual(int(times["righe_lette"]), 30000)
        self.assertLess(int(times["prima_pittura_da_lettura_ms"]), int(times["prima_pittura_ms"]))
        self.assertLess(int(times["prima_pittura_ms"]), WAIT * 1000)
        self.assertGreater(int(times["memoria_massima_kb"]), 10 * 1024)

    def test_times_of_few_rows(self):
        self.make_people(3)
        run = self.start("--tempi")
        run.ready()
        press("alt+F4")
        self.assert_ends(run, 1)
        self.assertRegex(run.errors(), r"\nrighe_lette: 3\nultima_riga_ms: \d+\n")

    def test_a_fetch_that_breaks_off_is_told_and_a_row_can_still_be_chosen(self):
        self.make_people(20000)
        # abs() of the smallest integer is an error of the database, in row 15000.
        query = ("SELECT codice, CASE WHEN codice < 15000 THEN codice ELSE abs(-9223372036854775807 - 1) END AS n "
                 "FROM persone")
        run = self.start(query=query)
        run.window("NorvelRicerca")
        press("Return")
        wait_until(lambda: not windows("NorvelRicerca"), "the message stays")
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")

    def test_closing_while_rows_arrive_ends_at_once(self):
        self.make("CREATE TABLE t (k INTEGER)")
        endless = "WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM c LIMIT 100000000) SELECT k FROM c"
        run = self.start("--tempi", query=endless, field="k")
        run.ready()
        began = time.monotonic()
        press("alt+F4")
        self.assert_ends(run, 1)
        self.assertLess(time.monotonic() - began, 10)
        self.assertIn("\nultima_riga_ms: -\n", run.errors())

    def test_the_database_is_let_go(self):
        self.make_people(20)
        run = self.start()
        run.ready()
        press("Return")
        self.assert_ends(run, 0, "1\n")
        connection = sqlite3.connect(self.database, timeout=0)
        self.addCleanup(connection.close)
        connection.execute("DELETE FROM persone")
        connection.commit()
        self.assertEqual(os.listdir(self.folder), ["prova.db"])


if __name__ == "__main__":
    unittest.main()
