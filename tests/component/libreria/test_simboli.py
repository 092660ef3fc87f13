"""What libNorvelRicerca.so offers, and under which name."""

import os
import re
import subprocess
import unittest

LIBRARY = os.environ["NR_LIBRARY"]


def symbols():
    """The defined dynamic symbols, in their source's notation."""
    listed = subprocess.run(["nm", "-D", "--defined-only", "--demangle", LIBRARY], check=True,
                            capture_output=True, text=True).stdout
    return [line.split(maxsplit=2)[2] for line in listed.splitlines()]


class Simboli(unittest.TestCase):
    def test_nothing_but_the_interface_is_exported(self):
        ours = re.compile(r"(nr_\w+$|norvel::|(vtable|typeinfo|typeinfo name) for norvel::|"
                          r"(non-)?virtual thunk to norvel::|covariant return thunk to norvel::)")
        self.assertEqual([name for name in symbols() if not ours.match(name)], [])

    def test_hosts_find_what_they_need(self):
        offered = symbols()
        for name in ("norvel::Ricerca::Cerca()", "norvel::Ricerca::Ricerca()", "norvel::Ricerca::Risposta",
                     "norvel::Variant::toText", "norvel::Errore::Errore", "typeinfo for norvel::Errore",
                     "norvel::adodb::makeClientRecordset()", "norvel::adodb::makeConnection()",
                     "norvel::apriRecordset", "norvel::operatoriVuoti()", "norvel::tabellaMembri()",
                     "norvel::impostaGestoreMessaggi", "norvel::runOwnerQueue()"):
            self.assertTrue(any(one.startswith(name) for one in offered), name)

    def test_every_function_of_the_c_header_is_there(self):
        with open(os.path.join(os.environ["NR_SOURCE"], "component", "NorvelRicercaC.h"),
                  encoding="utf-8") as header:
            declared = set(re.findall(r"^NR_API [^(]*?(nr_\w+)\(", header.read(), re.MULTILINE))
        self.assertGreater(len(declared), 20)
        exported = {name for name in symbols() if name.startswith("nr_")}
        self.assertEqual(exported, declared)

    def test_the_name_that_hosts_are_bound_to_is_the_major_versions(self):
        dynamic = subprocess.run(["readelf", "-d", LIBRARY], check=True, capture_output=True,
                                 text=True).stdout
        self.assertIn("soname: [libNorvelRicerca.so.1]", dynamic)


if __name__ == "__main__":
    unittest.main()
