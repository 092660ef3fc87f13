"""The library installed into a folder of its own, and hosts built against it there."""

import os
import shutil
import subprocess
import tempfile
import unittest

SOURCE = os.environ["NR_SOURCE"]
ESEMPI = os.path.join(SOURCE, "hosts", "esempi")
CC, CXX = os.environ["CC"], os.environ["CXX"]

HOST_IN_C = r"""
#include <NorvelRicerca/NorvelRicerca.h>
#include <stdio.h>
int main(void) { puts(nr_version()); return nr_abi() >= NR_ABI ? 0 : 1; }
"""
HOST_IN_CPP = r"""
#include <NorvelRicerca/NorvelRicerca.h>
#include <iostream>
int main() {
    norvel::Ricerca ricerca;
    ricerca.SetWidth("9000");
    norvel::Variant testo("dodici");
    try {
        (void)testo.toI4();
    } catch (const norvel::Errore& errore) {
        std::cout << ricerca.Ver() << ' ' << ricerca.Width() << ' ' << errore.numero() << ' '
                  << norvel::visteVuote()->Fields().Count() << '\n';
    }
}
"""


def run(*command, environment=None, status=0):
    """Runs a command; its output. A test failure with all it wrote when it does not end with status."""
    done = subprocess.run(command, capture_output=True, text=True, env=environment, check=False)
    if done.returncode != status:
        raise AssertionError(f"{' '.join(command)} ended with {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def under(folder, name):
    """The one file of that name somewhere under a folder."""
    found = [os.path.join(at, name) for at, _, files in os.walk(folder) if name in files]
    if len(found) != 1:
        raise AssertionError(f"{name}: {found}")
    return found[0]


class Installazione(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.prefix = os.path.join(self.folder, "prefix")
        for component in ("libreria", "sviluppo"):
            run("cmake", "--install", os.environ["NR_BUILD"], "--prefix", self.prefix,
                "--component", component)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def environment(self):
        """Programs find the library, and pkg-config its description, in the prefix alone."""
        return {**os.environ,
                "PKG_CONFIG_LIBDIR": os.path.dirname(under(self.prefix, "norvelricerca.pc")),
                "LD_LIBRARY_PATH": os.path.dirname(under(self.prefix, "libNorvelRicerca.so.1"))}

    def flags(self):
        return run("pkg-config", "--cflags", "--libs", "norvelricerca",
                   environment=self.environment()).split()

    def build_with_cmake(self, source, *definitions):
        build = os.path.join(self.folder, "build")
        run("cmake", "-S", source, "-B", build, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={self.prefix}",
            *definitions)
        run("cmake", "--build", build)
        return build

    def test_the_examples_build_with_find_package_and_say_what_they_miss(self):
        shutil.copytree(ESEMPI, os.path.join(self.folder, "esempi"))
        build = self.build_with_cmake(os.path.join(self.folder, "esempi"))
        for program in ("esempio_cpp", "esempio_c"):
            missing = os.path.join(self.folder, "nessuno.db")
            done = subprocess.run([os.path.join(build, program), missing], capture_output=True, text=True,
                                  check=False, env=self.environment())
            self.assertEqual((done.returncode, done.stdout), (2, ""), program)
            self.assertRegex(done.stderr, program + r": -?\d+ - \w")

    def test_a_project_in_cpp_of_two_lines_is_compiled_as_cpp20(self):
        self.write("host.cpp", HOST_IN_CPP)
        self.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.21)\nproject(Host LANGUAGES CXX)\n"
                   "add_executable(host host.cpp)\nfind_package(NorvelRicerca REQUIRED)\n"
                   "target_link_libraries(host PRIVATE NorvelRicerca::NorvelRicerca)\n")
        build = self.build_with_cmake(self.folder)
        self.assertEqual(run(os.path.join(build, "host"), environment=self.environment()),
                         "1.000.094 9000 13 4\n")

    def test_a_project_in_c_alone_finds_the_package(self):
        self.write("host.c", HOST_IN_C)
        self.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.21)\nproject(Host LANGUAGES C)\n"
                   "find_package(NorvelRicerca 1.0 REQUIRED)\nadd_executable(host host.c)\n"
                   "target_link_libraries(host PRIVATE NorvelRicerca::NorvelRicerca)\n")
        build = self.build_with_cmake(self.folder)
        self.assertEqual(run(os.path.join(build, "host"), environment=self.environment()), "1.0.94\n")

    def test_a_later_major_version_is_not_found(self):
        self.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.21)\nproject(Host LANGUAGES CXX)\n"
                   "find_package(NorvelRicerca 2.0 QUIET)\nif(NorvelRicerca_FOUND)\n"
                   "  message(FATAL_ERROR found)\nendif()\n")
        run("cmake", "-S", self.folder, "-B", os.path.join(self.folder, "build"), "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={self.prefix}")

    def test_hosts_in_cpp_and_c_build_with_pkg_config_wherever_the_prefix_is_moved(self):
        moved = os.path.join(self.folder, "altrove")
        os.rename(self.prefix, moved)
        self.prefix = moved
        self.assertEqual(run("pkg-config", "--modversion", "norvelricerca",
                             environment=self.environment()), "1.0.94\n")
        host = os.path.join(self.folder, "host")
        run(CXX, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
            self.write("host.cpp", HOST_IN_CPP), "-o", host, *self.flags())
        self.assertEqual(run(host, environment=self.environment()), "1.000.094 9000 13 4\n")
        run(CC, "-std=c99", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
            self.write("host.c", HOST_IN_C), "-o", host, *self.flags())
        self.assertEqual(run(host, environment=self.environment()), "1.0.94\n")

    def test_each_public_header_stands_alone_and_needs_the_standard_library_only(self):
        include = os.path.join(self.prefix, "include")
        headers = [os.path.relpath(os.path.join(at, file), include)
                   for at, _, files in os.walk(include) for file in files]
        self.assertGreater(len(headers), 8)
        for header in headers:
            source = self.write("uno.cpp", f"#include <{header}>\n")
            needed = run(CXX, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-M", source,
                         f"-I{include}", f"-I{include}/NorvelRicerca")
            self.assertNotRegex(needed, r"/(wx|unicode|gtk|sqlite3)[-/.\d]", header)
            run(CXX, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only", source,
                f"-I{include}", f"-I{include}/NorvelRicerca")


if __name__ == "__main__":
    unittest.main()
