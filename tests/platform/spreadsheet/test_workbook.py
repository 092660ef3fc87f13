"""Workbooks as readers of other makers see them: python3-xlrd cell by cell, catdoc's xls2csv as a second opinion,
and where they are installed Gnumeric and LibreOffice.

SCRIVI_CARTELLA names the program that writes them.
"""

import csv
import io
import os
import shutil
import subprocess
import tempfile
import unittest

import xlrd


class WorkbookTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = os.path.join(folder.name, "export.xls")

    def write(self, rows, *more, status=0):
        """Writes the rows and gives what the program said."""
        text = "".join("\t".join(row) + "\n" for row in rows)
        run = subprocess.run([os.environ["SCRIVI_CARTELLA"], self.path, *map(str, more)], input=text.encode(),
                             capture_output=True, check=False)
        self.assertEqual(run.returncode, status, run.stderr.decode())
        return run.stdout.decode().strip()

    def book(self):
        log = io.StringIO()
        book = xlrd.open_workbook(self.path, logfile=log, formatting_info=True)
        self.assertEqual(log.getvalue(), "")  # not a word
        return book

    def sheet(self, *rows):
        self.assertEqual(self.write(rows), "0 0")
        return self.book().sheet_by_index(0)

    def second_reader(self):
        """Rows as texts. Its dates are in the format of the C locale, so they are not looked at."""
        text = subprocess.run(["xls2csv", "-d", "utf-8", self.path], capture_output=True, check=True).stdout.decode()
        return list(csv.reader(io.StringIO(text.replace("\f", ""))))

    def test_numbers_stay_numbers(self):
        numbers = [0, 1, -1, 12.5, 0.1, -0.0, 536870911, 536870912, -536870912, -536870913, 1e300, 2.5e-300,
                   123456789012345]
        sheet = self.sheet(*[[f"n{n!r}"] for n in numbers])
        self.assertEqual(list(sheet.col_types(0)), [xlrd.XL_CELL_NUMBER] * len(numbers))
        self.assertEqual(sheet.col_values(0), numbers)

    def test_a_number_that_is_none_is_an_error_value(self):
        sheet = self.sheet(["ninf", "n-inf", "nnan"])
        self.assertEqual(list(sheet.row_types(0)), [xlrd.XL_CELL_ERROR] * 3)
        self.assertEqual(xlrd.error_text_from_code[sheet.cell_value(0, 0)], "#NUM!")

    def test_booleans_are_booleans(self):
        sheet = self.sheet(["b1", "b0", "b-1"])
        self.assertEqual(list(sheet.row_types(0)), [xlrd.XL_CELL_BOOLEAN] * 3)
        self.assertEqual(sheet.row_values(0), [1, 0, 1])

    def test_dates_are_dates_with_a_date_format(self):
        sheet = self.sheet(["d40617", "d40617.75", "h0.5", "d61", "d60", "d2"])
        book = self.book()
        self.assertEqual(list(sheet.row_types(0)), [xlrd.XL_CELL_DATE] * 6)
        read = [xlrd.xldate_as_tuple(value, book.datemode) for value in sheet.row_values(0)[:4]]
        self.assertEqual(read, [(2011, 3, 15, 0, 0, 0), (2011, 3, 15, 18, 0, 0), (0, 0, 0, 12, 0, 0),
                                (1900, 3, 1, 0, 0, 0)])
        self.assertEqual(sheet.row_values(0)[4:], [59, 1])  # 28 February, 1 January 1900

    def test_dates_before_1900_are_texts(self):
        sheet = self.sheet(["d1", "d-100"])
        self.assertEqual(sheet.row_values(0), ["31/12/1899", "21/09/1899"])

    def test_null_is_a_blank_cell(self):
        sheet = self.sheet(["n1", "", "n3"], ["", "", ""], ["n4"])
        self.assertEqual(sheet.row_types(0)[1], xlrd.XL_CELL_EMPTY)
        self.assertEqual(sheet.col_values(0), [1, "", 4])

    def test_texts_of_every_alphabet(self):
        texts = ["Rossi", "città perché", "10 €", "Łódź", "Ελλάδα", "日本語", "😀 fine", "", " blanks ", "due\\nrighe",
                 "=1+1", "'apostrofo", "0123"]
        sheet = self.sheet(*[["t" + text] for text in texts])
        self.assertEqual(sheet.col_values(0), [text.replace("\\n", "\n") for text in texts])
        self.assertEqual(list(sheet.col_types(0)), [xlrd.XL_CELL_TEXT] * len(texts))

    def test_control_characters_stay_in_their_cell(self):
        texts = ["a\0b", "\0", "a\rb", "\x07\x1f\x7f", "=cmd|' /C calc'!A0", "<b>&amp;", '"a";b', "x" * 32767 + "y"]
        self.assertEqual(self.write([["t" + text, "n1"] for text in texts]), "1 0")
        sheet = self.book().sheet_by_index(0)
        self.assertEqual(sheet.col_values(0), texts[:-1] + ["x" * 32767])
        self.assertEqual(list(sheet.col_types(0)), [xlrd.XL_CELL_TEXT] * len(texts))
        self.assertEqual(sheet.col_values(1), [1] * len(texts))

    def test_bytes_that_are_no_utf8_are_read_as_western_text(self):
        run = subprocess.run([os.environ["SCRIVI_CARTELLA"], self.path], input=b"tcitt\xe0 \x80\n",
                             capture_output=True, check=True)
        self.assertEqual(run.stdout, b"0 0\n")
        self.assertEqual(self.book().sheet_by_index(0).cell_value(0, 0), "città €")

    def test_texts_around_the_end_of_a_record(self):
        """Lengths that let the texts' records end at every place of a text, its head included."""
        for alphabet in ["x", "€", "😀", "x😀"]:
            rows = [["t" + (alphabet * 2000)[:length]] for length in range(1, 2000, 7)]
            sheet = self.sheet(*rows)
            self.assertEqual([["t" + value] for value in sheet.col_values(0)], rows)

    def test_the_longest_text_of_a_cell_is_whole_and_a_longer_one_is_cut_and_counted(self):
        long = "à" * 32767
        self.assertEqual(self.write([["t" + long], ["t" + long + "b"], ["t" + "x" * 40000], ["t" + "😀" * 16384]]),
                         "3 0")
        values = self.book().sheet_by_index(0).col_values(0)
        self.assertEqual(values, [long, long, "x" * 32767, "😀" * 16383])

    def test_columns_past_the_256th_are_left_out_and_counted(self):
        self.assertEqual(self.write([[f"n{n}" for n in range(300)]]), "0 44")
        self.assertEqual(self.book().sheet_by_index(0).row_values(0), list(range(256)))

    def test_past_65536_rows_it_goes_on_in_further_sheets(self):
        rows = [[f"n{n}", f"tTesto {n}", "tROMA"] for n in range(1000)]
        self.assertEqual(self.write(rows, 140), "0 0")
        book = self.book()
        self.assertEqual(book.sheet_names(), ["Foglio1", "Foglio2", "Foglio3"])
        self.assertEqual([sheet.nrows for sheet in book.sheets()], [65536, 65536, 140000 - 2 * 65536])
        row = 0
        for sheet in book.sheets():
            for values in map(sheet.row_values, range(sheet.nrows)):
                self.assertEqual(values, [row % 1000, f"Testo {row % 1000}", "ROMA"])
                row += 1

    def test_exactly_one_sheet_of_rows_makes_one_sheet(self):
        self.assertEqual(self.write([["n1"]] * 64, 1024), "0 0")
        self.assertEqual([sheet.nrows for sheet in self.book().sheets()], [65536])

    def test_nothing_makes_an_empty_sheet(self):
        self.assertEqual(self.write([]), "0 0")
        self.assertEqual([(sheet.name, sheet.nrows) for sheet in self.book().sheets()], [("Foglio1", 0)])
        self.assertEqual(self.second_reader(), [])

    def test_files_of_every_size_around_their_tables_limits(self):
        """7 MB is where the header no longer names every table of the file; sectors are 512 bytes."""
        for rows in [1, 100, 300, 15000, 30000, 65000]:
            self.write([["t" + "x" * 90 + str(n), f"n{n}.5"] for n in range(100)], rows // 100 or 1)
            sheet = self.book().sheet_by_index(0)
            self.assertEqual(sheet.cell_value(sheet.nrows - 1, 1), 99.5)
            self.assertEqual(os.path.getsize(self.path) % 512, 0)

    def test_a_second_reader_reads_the_same(self):
        self.write([["n1", "tcittà", "b1"], ["n2.5", "", "t10 €"]])
        self.assertEqual(self.second_reader(), [["1", "città"], ["2.5", "", "10 €"]])

    def test_a_file_is_as_expected_byte_for_byte(self):
        """Every kind of cell. NR_SCRIVI_ATTESI=1 writes the expected file anew: look at it in a spreadsheet then."""
        expected = os.path.join(os.path.dirname(os.path.abspath(__file__)), "attesi", "celle.xls")
        self.write([["n1", "n-2.5", "b1", "d40617", "d40617.75", "h0.5", "tcittà", "t€", "tRoma"],
                    ["", "", "", "d1", "ninf", "t", "tRoma", "n123456789012345"]])
        with open(self.path, "rb") as file:
            written = file.read()
        if os.environ.get("NR_SCRIVI_ATTESI"):
            with open(expected, "wb") as file:
                file.write(written)
        with open(expected, "rb") as file:
            self.assertEqual(written, file.read())

    def converted(self, *command):
        """What a whole spreadsheet program makes of the file, as rows of texts. It says nothing of its own."""
        text = os.path.join(os.path.dirname(self.path), "export.csv")
        home = os.path.join(os.path.dirname(self.path), "home")
        os.mkdir(home)
        run = subprocess.run(command, cwd=os.path.dirname(self.path), env={**os.environ, "HOME": home},
                             capture_output=True, check=True, timeout=240)
        self.assertNotIn("error", (run.stdout + run.stderr).decode().lower())
        with open(text, encoding="utf-8", newline="") as file:
            return list(csv.reader(file))

    MIXED = [["n1", "tcittà è qui", "n12.5", "t€ 日本"], ["n2", "", "n-0.5", "t=1+1"]]
    AS_SHOWN = [["1", "città è qui", "12.5", "€ 日本"], ["2", "", "-0.5", "=1+1"]]

    @unittest.skipUnless(shutil.which("ssconvert"), "Gnumeric is not installed")
    def test_gnumeric_opens_it(self):
        self.write(self.MIXED)
        self.assertEqual(self.converted("ssconvert", "export.xls", "export.csv"), self.AS_SHOWN)

    @unittest.skipUnless(shutil.which("soffice"), "LibreOffice is not installed")
    def test_libreoffice_opens_it(self):
        self.write(self.MIXED)
        rows = self.converted("soffice", "--headless", "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1",
                              "export.xls")
        self.assertEqual(rows, self.AS_SHOWN)

    def test_an_export_that_is_given_up_leaves_what_was_there(self):
        with open(self.path, "w", encoding="utf-8") as old:
            old.write("vecchio")
        self.assertEqual(self.write([["n1", "tx"]] * 10, 1000, 0.1), "given up 0 0")
        with open(self.path, encoding="utf-8") as old:
            self.assertEqual(old.read(), "vecchio")
        self.assertEqual(os.listdir(os.path.dirname(self.path)), ["export.xls"])

    def test_a_full_disk_is_told(self):
        os.symlink("/dev/full", self.path)
        said = self.write([["n1"]] * 100, 100, status=1)
        self.assertTrue(said.startswith("61 ") and "export.xls" in said, said)

    def test_a_missing_folder_is_told(self):
        self.path = os.path.join(os.path.dirname(self.path), "manca", "export.xls")
        self.assertTrue(self.write([["n1"]], status=1).startswith("76 "))


if __name__ == "__main__":
    unittest.main()
