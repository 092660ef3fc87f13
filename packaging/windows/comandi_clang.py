#!/usr/bin/env python3
"""Lets clang-tidy read the sources that only the Windows build has: comandi_clang.py WINDOWS_BUILD LINUX_BUILD

Writes WINDOWS_BUILD/clang/compile_commands.json: the compile commands of the sources that LINUX_BUILD does not
compile, as clang takes them (its target, MinGW's headers). Then:
packaging/lint_tidy.py WINDOWS_BUILD/clang JOBS
"""
import json
import pathlib
import subprocess
import sys


def commands(build):
    return json.loads((build / "compile_commands.json").read_text())


def header_folders(compiler):
    """Where the compiler looks for the system's headers, in its order."""
    text = subprocess.run([compiler, "-std=c++20", "-E", "-v", "-x", "c++", "/dev/null"], check=True,
                          capture_output=True, text=True).stderr
    listed = text.split("#include <...> search starts here:\n")[1].split("End of search list.")[0]
    folders = [str(pathlib.Path(line.strip()).resolve()) for line in listed.splitlines()]
    # GCC's own headers describe its built-in functions; clang has its own.
    return [folder for folder in folders if not folder.endswith(("/include-fixed", "-posix/include"))]


windows, linux = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
elsewhere = {entry["file"] for entry in commands(linux)}
entries = [entry for entry in commands(windows)
           if entry["file"] not in elsewhere and entry["file"].endswith(".cpp")]
for entry in entries:
    words = entry["command"].split(" ")
    if words[0].endswith("ccache"):
        words = words[1:]
    target = pathlib.Path(words[0]).name.split("-")[0] + "-w64-windows-gnu"
    headers = [f"-isystem{folder}" for folder in header_folders(words[0])]
    words = [word for word in words if word != "-fno-keep-inline-dllexport"]
    entry["command"] = " ".join([words[0], f"--target={target}", *words[1:], "-nostdinc++", *headers])
folder = windows / "clang"
folder.mkdir(exist_ok=True)
(folder / "compile_commands.json").write_text(json.dumps(entries, indent=1))
print(f"{len(entries)} sources for Windows only")
