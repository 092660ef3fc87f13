#!/usr/bin/env python3
"""Runs clang-tidy over the project's sources: lint_tidy.py BUILD_FOLDER JOBS

A source that passed is not checked again until it, a header of the project, a .clang-tidy or the compile
commands change: what passed is kept as a hash in BUILD_FOLDER/tidy-passed.
"""
import concurrent.futures
import hashlib
import json
import pathlib
import subprocess
import sys

build = pathlib.Path(sys.argv[1]).resolve()
jobs = int(sys.argv[2])
root = pathlib.Path(__file__).resolve().parent.parent


def tracked(*patterns):
    names = subprocess.run(["git", "ls-files", *patterns], cwd=root, check=True,
                           capture_output=True, text=True).stdout.split("\n")
    return [root / name for name in names if name]


def digest(*paths):
    total = hashlib.sha256()
    for path in paths:
        total.update(path.read_bytes())
    return total


common = digest(*tracked("*.clang-tidy", "*.h")).hexdigest()
commands = {entry["file"]: entry["command"]
            for entry in json.loads((build / "compile_commands.json").read_text())}
passed_file = build / "tidy-passed"
passed = set(passed_file.read_text().split()) if passed_file.exists() else set()


def check(source):
    own = digest(source)
    own.update((common + commands[str(source)]).encode())
    key = own.hexdigest()
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
