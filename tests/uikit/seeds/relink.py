#!/usr/bin/env python3
"""relink.py BUILD EDITED TARGET PROGRAM [OPTION...]: links a target of a build again, as PROGRAM.

The files in the folder EDITED stand for those of the same names in the sources. What depends on them is compiled again, into
the folder of PROGRAM; the build itself stays as it is. The options go to the linker. Ends with 2 if something does not compile
or link.
"""

import concurrent.futures
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parents[3]


def ninja(build, *arguments):
    return subprocess.run(["ninja", *arguments], cwd=build, capture_output=True, text=True, check=True).stdout


def objects_of(build, files):
    """The objects of the build that any of the files went into."""
    found = set()
    for line in ninja(build, "-t", "deps").splitlines():
        if not line.startswith(" "):
            target = line.partition(":")[0]
        elif os.path.abspath(os.path.join(build, line.strip())) in files:
            found.add(target)
    return found


def linking(build, target):
    """The last command of a target, without what is done afterwards."""
    commands = ninja(build, "-t", "commands", target).splitlines()[-1].split(" && ")
    return shlex.split(next(command for command in commands if " -o " in command))


def with_output(command, output):
    place = command.index("-o") + 1
    return command[:place] + [str(output)] + command[place + 1:]


def run(command, folder):
    said = subprocess.run(command, cwd=folder, capture_output=True, text=True)
    if said.returncode != 0:
        print(said.stdout + said.stderr)
        sys.exit(2)


def compile_again(entry, edited, output):
    command = shlex.split(entry["command"])
    source = edited / pathlib.Path(entry["file"]).relative_to(TOP)
    if source.exists():
        command[command.index(entry["file"])] = str(source)
    compiler = next(place for place, word in enumerate(command) if word.startswith("-"))
    output.parent.mkdir(parents=True, exist_ok=True)
    run(with_output(command[:compiler] + [f"-I{edited}"] + command[compiler:], output), entry["directory"])


def compile_commands(build):
    """How each object of the build is compiled."""
    with open(build / "compile_commands.json") as file:
        entries = json.load(file)
    return {command[command.index("-o") + 1]: entry
            for entry in entries for command in [shlex.split(entry["command"])]}


def archive_of(made):
    """The library that an object is in: "FOLDER/CMakeFiles/LIBRARY.dir/SOURCE.o" is in "FOLDER/libLIBRARY.a"."""
    folder, _, rest = made.partition("CMakeFiles/")
    return f"{folder}lib{rest.partition('.dir/')[0]}.a"


def main():
    build, edited, target, program, *options = sys.argv[1:]
    build, edited, program = (pathlib.Path(path).resolve() for path in (build, edited, program))
    command = linking(build, target)
    linked = " ".join(command)
    names = {str(TOP / file.relative_to(edited)) for file in edited.rglob("*") if file.is_file()}
    entries = compile_commands(build)
    # The log of a build also knows of objects that are not made any more.
    again = {made: program.parent / made for made in objects_of(build, names) & set(entries)
             if made in command or archive_of(made) in linked}
    if not again:
        print(f"nothing of {target} depends on what was edited")
        sys.exit(2)

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(lambda made: compile_again(entries[made], edited, again[made]), again))

    for made, output in again.items():
        archive = archive_of(made)
        copy = program.parent / archive
        if made not in command and not copy.exists():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(build / archive, copy)
            command = [word.replace(archive, str(copy)) for word in command]
        if copy.exists():
            run(["llvm-ar-19", "r", str(copy), str(output)], build)
    command = [str(again.get(word, word)) for word in command]
    run(with_output(command, program) + options, build)


main()
