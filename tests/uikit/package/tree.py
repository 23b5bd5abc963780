#!/usr/bin/env python3
"""tree.py MANIFEST: the Swift package's targets hold every source of the phone's build, each once, and nothing else."""

import pathlib
import re
import sys

TOP = pathlib.Path(__file__).resolve().parents[3]
SOURCES = {".cpp", ".mm", ".swift"}
# What is the phone's; of what adapters share, the folders that the phone's adapter includes from.
FOLDERS = ["ZelvoraPlatform", "ZelvoraIOS", "ZelvoraAdapters/uikit", "module"]


def below(path):
    return {path} if path.is_file() else {file for file in path.rglob("*") if file.suffix in SOURCES}


def shared():
    includes = re.compile(r'#(?:include|import) "(ZelvoraAdapters/shared/[^"]+)/[^/"]+"')
    return {folder for file in (TOP / "ZelvoraAdapters/uikit").rglob("*.[hm]*")
            for folder in includes.findall(file.read_text(encoding="utf-8"))}


def main():
    text = pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")
    faults = [] if ".iOS(\"26.2\")" in text else ["its oldest phone is not 26.2"]
    if "unsafeFlags" in text:
        faults.append("it has unsafe flags, which forbid depending on it")
    seen = []
    for target in text.split(".target(")[1:]:
        root = TOP / re.search(r'path: "([^"]*)"', target)[1]

        def listed(name):
            match = re.search(name + r": \[(.*?)\]", target, re.S)
            return [root / path for path in re.findall(r'"([^"]*)"', match[1])] if match else []

        faults += [f"there is no {path}" for path in listed("exclude") + listed("sources") if not path.exists()]
        headers = re.search(r'publicHeadersPath: "([^"]*)"', target)
        if headers and not any((root / headers[1]).rglob("*.h")):
            faults.append(f"there are no headers in {headers[1]}")
        seen += [file for path in listed("sources") for file in below(path) - set(listed("exclude"))]
    expected = {file for folder in FOLDERS + sorted(shared()) for file in below(TOP / folder)}
    name = lambda file: str(file.relative_to(TOP))
    faults += [f"{name(file)} is in no target" for file in sorted(expected - set(seen))]
    faults += [f"{name(file)} is not the phone's" for file in sorted(set(seen) - expected)]
    faults += [f"{name(file)} is in two targets" for file in sorted({f for f in seen if seen.count(f) > 1})]
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
