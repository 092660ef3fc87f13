#!/usr/bin/env python3
"""Runs clang-tidy over the project's sources: lint_tidy.py BUILD_FOLDER JOBS

A source that passed is not checked again, in any checkout, until it, a header of the project that it includes
(through other headers, too), a .clang-tidy, its compile command or clang-tidy itself changes: what passed is kept as
hashes in ~/.cache/norvelricerca/tidy-passed (XDG_CACHE_HOME where it is set). Delete that file to check everything.
"""
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

build = pathlib.Path(sys.argv[1]).resolve()
jobs = int(sys.argv[2])
root = pathlib.Path(__file__).resolve().parent.parent
included = re.compile(r'^[ \t]*#[ \t]*include[ \t]+["<]([^">]+)[">]', re.MULTILINE)


def tracked(*patterns):
    names = subprocess.run(["git", "ls-files", *patterns], cwd=root, check=True,
                           capture_output=True, text=True).stdout.split("\n")
    return [root / name for name in names if name]


@functools.cache
def direct_includes(path, folders):
    """The project's files that one file includes, those made by the build with them."""
    found = set()
    for name in included.findall(path.read_text(errors="replace")):
        places = (folder / name for folder in (path.parent, *folders))
        found |= {place.resolve() for place in places if place.is_file()}
    return found


def with_headers(source, folders):
    """A source and every header of the project that reading it reads, at most."""
    seen, open_ends = {source}, [source]
    while open_ends:
        new = direct_includes(open_ends.pop(), folders) - seen
        seen |= new
        open_ends += new
    return sorted(seen)


def include_folders(command):
    named = (pathlib.Path(word[2:]) for word in command.split() if word.startswith("-I"))
    return tuple(folder for folder in named if folder.is_relative_to(root))


common = hashlib.sha256(subprocess.run(["clang-tidy", "--version"], check=True, capture_output=True).stdout)
for settings in tracked("*.clang-tidy"):
    common.update(str(settings.relative_to(root)).encode() + settings.read_bytes())
commands = {entry["file"]: entry["command"]
            for entry in json.loads((build / "compile_commands.json").read_text())}
cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache") / "norvelricerca"
cache.mkdir(parents=True, exist_ok=True)
passed_file = cache / "tidy-passed"
passed = set(passed_file.read_text().split()) if passed_file.exists() else set()


def key_of(source):
    command = commands[str(source)]
    own = common.copy()
    own.update(command.replace(str(root), "").encode())
    for path in with_headers(source, include_folders(command)):
        own.update(str(path.relative_to(root)).encode() + path.read_bytes())
    return own.hexdigest()


def check(source):
    key = key_of(source)
    if key in passed:
        return key, True, ""
    run = subprocess.run(["clang-tidy", "--quiet", "-p", str(build), str(source)],
                         capture_output=True, text=True, check=False)
    return key, run.returncode == 0, run.stdout + run.stderr


sources = [path for path in tracked("*.cpp") if str(path) in commands]
failures = 0
with concurrent.futures.ThreadPoolExecutor(jobs) as pool, passed_file.open("a") as log:
    for source, (key, ok, output) in zip(sources, pool.map(check, sources)):
        if ok:
            if key not in passed:
                log.write(key + "\n")
                log.flush()
        else:
            failures += 1
            print(f"{source.relative_to(root)}:\n{output}")
print(f"clang-tidy: {len(sources)} sources, {failures} with findings")
sys.exit(1 if failures else 0)
