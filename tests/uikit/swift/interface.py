#!/usr/bin/env python3
"""interface.py SWIFTINTERFACE SYMBOLS GOLDEN: prints the module as a Swift host sees it.

First what the overlay declares, as the compiler printed it; then what comes from the Objective-C headers, from the
compiler's symbol graph. The latter has no order of its own, so a line that the golden file has keeps its place there.
"""

import json
import sys

# What every class has from its root, and what the compiler derives.
INHERITED = {"NSObjectProtocol", "Hashable", "Equatable"}


def overlay(path):
    with open(path, encoding="utf-8") as file:
        return [line.rstrip("\n") for line in file if not line.startswith("// swift-")]


def text(symbol):
    return "".join(fragment["spelling"] for fragment in symbol["declarationFragments"])


def heritage(identifier, relationships):
    def names(kind):
        return sorted(r["targetFallback"].split(".")[-1] for r in relationships
                      if r["kind"] == kind and r["source"] == identifier)

    return names("inheritsFrom") + [name for name in names("conformsTo") if name not in INHERITED]


def imported(path):
    """The lines of each declaration by the name of its class, "" for what is in none."""
    with open(path, encoding="utf-8") as file:
        graph = json.load(file)
    members = {}
    for symbol in graph["symbols"]:
        identifier = symbol["identifier"]["precise"]
        if not identifier.startswith("c:"):
            continue
        name, *inner = symbol["pathComponents"]
        if inner:
            members.setdefault(name, set()).add("  " + text(symbol))
        elif symbol["kind"]["identifier"] == "swift.class":
            parents = heritage(identifier, graph["relationships"])
            line = f"{symbol['accessLevel']} {text(symbol)} : {', '.join(parents)} {{"
            members.setdefault(name, set()).add(line)
        else:
            members.setdefault("", set()).add(text(symbol))
    return members


def main():
    interface, symbols, golden = sys.argv[1:]
    with open(golden, encoding="utf-8") as file:
        place = {line.rstrip("\n"): number for number, line in reversed(list(enumerate(file)))}
    # A class is where its first line is; a line that is new comes last.
    order = lambda line: (place.get(line, len(place)), line)
    head = lambda lines: next(line for line in lines if line.endswith("{"))
    print("\n".join(overlay(interface)))
    members = imported(symbols)
    free = members.pop("", set())
    for name in sorted(members, key=lambda name: order(head(members[name]))):
        first = head(members[name])
        print(first)
        print("\n".join(sorted(members[name] - {first}, key=order)))
        print("}")
    print("\n".join(sorted(free, key=order)))


main()
