#!/usr/bin/env python3
"""run_tidy.py BUILD_FOLDER STATE_FOLDER: runs clang-tidy over the library's sources.

The commands of the cross compiler are translated for clang: its target, the cross compiler's own include
folders, and of the options only those that decide what the code means. A source that passed is checked
again only when it, a header that it includes, the rules or its command changed.
"""
import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def system_include_folders(compiler):
    """The compiler's include folders, less those of its own intrinsics, for which clang has its own."""
    told = subprocess.run([compiler, "-E", "-x", "c++", "-v", os.devnull],
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True).stderr
    listed = told.split("#include <...> search starts here:")[1].split("End of search list")[0]
    folders = [os.path.normpath(line.strip()) for line in listed.strip().splitlines()]
    own = [folder for folder in folders if Path(folder, "mmintrin.h").exists() or folder.endswith("include-fixed")]
    return [folder for folder in folders if folder not in own]


def meaning(arguments):
    """The options of a command that decide what the code means."""
    kept, rest = [], iter(arguments)
    for argument in rest:
        if argument in ("-I", "-D", "-U", "-isystem", "-include"):
            kept += [argument, next(rest)]
        elif argument.startswith(("-I", "-D", "-U", "-std=", "-isystem")):
            kept.append(argument)
    return kept


def library_commands(build):
    """Of each source of the library the command that compiles it as shipped."""
    commands = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = Path(entry["directory"], entry["file"]).resolve()
        arguments = shlex.split(entry["command"])
        if ROOT / "src" in source.parents and "-DTAVIX_CHECKED" not in arguments:
            commands[source] = (entry["directory"], arguments)
    return commands


def dependencies(build):
    """What each source includes of the project, from what the compiler told ninja."""
    listed = subprocess.run(["ninja", "-C", build, "-t", "deps"], stdout=subprocess.PIPE, text=True, check=True).stdout
    found = {}
    for block in listed.split("\n\n"):
        paths = [(build / line.strip()).resolve() for line in block.splitlines()[1:] if line.strip()]
        ours = [path for path in paths if ROOT in path.parents]
        for source in (path for path in ours if path.suffix == ".cpp"):
            found.setdefault(source, set()).update(ours)
    return found


def fingerprint(command, files):
    digest = hashlib.sha256(repr(command).encode())
    for file in [ROOT / ".clang-tidy", *sorted(files)]:
        digest.update(f"\0{file}\0".encode() + file.read_bytes())
    return digest.hexdigest()


def check(source, state):
    done = subprocess.run(["clang-tidy", "--quiet", "-p", state, source],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode == 0:
        return ""
    return done.stdout + "".join(line + "\n" for line in done.stderr.splitlines() if "warnings" not in line)


def main():
    build, state = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    state.mkdir(parents=True, exist_ok=True)
    commands = library_commands(build)
    if not commands:
        sys.exit("run_tidy: the build has no sources of the library")
    version = subprocess.run(["clang-tidy", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout
    system, target = [], ""
    translated, wanted, included = [], {}, dependencies(build)
    for source, (directory, arguments) in commands.items():
        if not system:
            compiler = arguments[0]
            target = f"--target={Path(compiler).name.split('-')[0]}-w64-windows-gnu"
            system = [word for folder in system_include_folders(compiler) for word in ("-isystem", folder)]
        command = ["clang++", target, "-nostdinc++", *meaning(arguments), *system, "-c", str(source)]
        translated.append({"directory": directory, "file": str(source), "arguments": command})
        wanted[str(source)] = fingerprint([version, command], included.get(source, {source}))
    (state / "compile_commands.json").write_text(json.dumps(translated, indent=1))

    passed_file = state / "passed.json"
    passed = json.loads(passed_file.read_text()) if passed_file.exists() else {}
    todo = [source for source, print_ in wanted.items() if passed.get(source) != print_]
    failures = 0
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, findings in zip(todo, pool.map(lambda source: check(source, state), todo)):
            if findings:
                failures += 1
                print(findings)
            else:
                passed[source] = wanted[source]
                passed_file.write_text(json.dumps(passed, indent=1))
    print(f"clang-tidy: {len(wanted)} sources, {len(todo)} checked, {failures} with findings")
    sys.exit(1 if failures else 0)


main()
