#!/usr/bin/env python3
"""Writes the stubs that the gate links: what the phone's libraries are known to export, as symbols.txt lists it.

usage: mktbd.py FOLDER
"""

import pathlib
import subprocess
import sys

TARGETS = "[ arm64-ios, arm64-ios-simulator, x86_64-ios-simulator ]"
LIBRARIES = {"libSystem": "libSystem.B", "libobjc": "libobjc.A", "libc++": "libc++.1"}


def listed():
    """For each library its classes and its other symbols."""
    libraries = {}
    for line in pathlib.Path(__file__).with_name("symbols.txt").read_text().splitlines():
        line = line.split("#")[0].strip()
        if line.startswith("["):
            current = libraries.setdefault(line[1:-1], ([], []))
        elif line.startswith("@"):
            current[0].append(line[1:])
        elif line:
            current[1].append(line)
    return libraries


def of_libcxx():
    """What Debian's libc++ exports: the phone's is the same project, and availability takes care of versions."""
    symbols = set()
    for library in ("libc++.so.1", "libc++abi.so.1"):
        command = ["llvm-nm-19", "-D", "--defined-only", "--format=just-symbols", f"/usr/lib/llvm-19/lib/{library}"]
        names = subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()
        symbols.update("_" + name.split("@")[0] for name in names
                       if name.startswith(("_Z", "__cxa", "__gxx", "__dynamic_cast")))
    return sorted(symbols)


def stub(name, classes, symbols):
    base = name.removesuffix(".framework")
    if name.endswith(".framework"):
        file, installed = f"System/Library/Frameworks/{name}/{base}.tbd", f"System/Library/Frameworks/{name}/{base}"
    else:
        file, installed = f"usr/lib/{name}.tbd", f"usr/lib/{LIBRARIES[name]}.dylib"
    text = f"--- !tapi-tbd\ntbd-version: 4\ntargets: {TARGETS}\ninstall-name: '/{installed}'\n"
    text += f"exports:\n  - targets: {TARGETS}\n"
    if symbols:
        text += "    symbols: [ " + ", ".join(f"'{symbol}'" for symbol in symbols) + " ]\n"
    if classes:
        text += "    objc-classes: [ " + ", ".join(classes) + " ]\n"
    return file, text + "...\n"


def main():
    libraries = listed()
    libraries["libc++"][1].extend(of_libcxx())
    for name, (classes, symbols) in libraries.items():
        file, text = stub(name, classes, symbols)
        path = pathlib.Path(sys.argv[1]) / file
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)


main()
