#!/usr/bin/env python3
"""Compares our declarations of Foundation with GNUstep's, which others wrote, so that we have not misremembered them.

A method is compared by its types without their qualifiers and parameters, as the two write those differently; a constant by its
value. What GNUstep lacks is listed, and checked by nothing.
"""

import pathlib
import re
import sys

from clang import cindex
from clang.cindex import CursorKind

GATE = pathlib.Path(__file__).resolve().parent.parent
COMMON = ["-x", "objective-c", "-fblocks", "-fobjc-arc", "-resource-dir", "/usr/lib/llvm-19/lib/clang/19"]
OURS = [*COMMON, "-fobjc-runtime=ios-26.2", "-isystem", str(GATE / "decl")]
GNUSTEP = [*COMMON, "-fobjc-runtime=gnustep-1.9", "-I" + str(GATE / "runtime/arcshim/include"),
           "-D_NATIVE_OBJC_EXCEPTIONS", "-DGNUSTEP_BASE_LIBRARY=1", "-isystem", "/usr/include/GNUstep",
           "-idirafter", "/usr/lib/gcc/x86_64-linux-gnu/12/include"]

QUALIFIERS = (r"\b(_Nonnull|_Nullable|_Null_unspecified|__strong|__autoreleasing|__unsafe_unretained|__weak|const|"
              r"__kindof|struct)\b")
INTEGERS = {"unsigned long", "long", "int", "unsigned int"}
METHODS = {CursorKind.OBJC_INSTANCE_METHOD_DECL: "-", CursorKind.OBJC_CLASS_METHOD_DECL: "+"}


def spelled(kind):
    canonical = kind.get_canonical()
    text = canonical.spelling
    if canonical.get_declaration().kind == CursorKind.ENUM_DECL or text in INTEGERS:
        return "integer"
    text = re.sub(QUALIFIERS, "", text)
    while (shorter := re.sub(r"<[^<>]*>", "", text)) != text:
        text = shorter
    text = re.sub(r"\b(BOOL|signed char|unsigned char|_Bool|bool)\b", "BOOL", text)
    text = re.sub(r"\b(instancetype|ObjectType|KeyType|ElementT|ValT|KeyT)\b", "id", text)
    # A structure has a tag or not, and in C a function without parameters is written in two ways.
    return re.sub(r"\s+", "", text).replace("[]", "*").replace("(void)", "()").replace("_NSRange", "NSRange")


class Declarations:
    """The methods, the constants and the superclasses that <Foundation/Foundation.h> declares."""

    def __init__(self, arguments):
        self.methods, self.constants, self.superclasses = {}, {}, {}
        unit = cindex.Index.create().parse(
            "foundation.m", args=arguments, unsaved_files=[("foundation.m", "#import <Foundation/Foundation.h>\n")])
        errors = [str(diagnostic) for diagnostic in unit.diagnostics if diagnostic.severity >= cindex.Diagnostic.Error]
        if errors:
            sys.exit("error: the declarations do not compile\n" + "\n".join(errors[:3]))
        for cursor in unit.cursor.get_children():
            self.read(cursor)

    def read(self, cursor):
        if cursor.kind in (CursorKind.OBJC_INTERFACE_DECL, CursorKind.OBJC_PROTOCOL_DECL):
            self.read_methods(cursor, cursor.spelling)
        elif cursor.kind == CursorKind.OBJC_CATEGORY_DECL:
            for child in cursor.get_children():
                if child.kind == CursorKind.OBJC_CLASS_REF:
                    self.read_methods(cursor, child.spelling)
                    break
        elif cursor.kind == CursorKind.ENUM_DECL:
            self.constants.update((child.spelling, child.enum_value) for child in cursor.get_children()
                                  if child.kind == CursorKind.ENUM_CONSTANT_DECL)

    def read_methods(self, cursor, owner):
        for child in cursor.get_children():
            if child.kind in METHODS:
                types = (spelled(child.result_type), *(spelled(argument.type) for argument in child.get_arguments()))
                self.methods[owner, METHODS[child.kind], child.spelling] = types
            elif child.kind == CursorKind.OBJC_SUPER_CLASS_REF:
                self.superclasses[owner] = child.spelling

    def find(self, owner, sign, selector):
        while owner:
            if (owner, sign, selector) in self.methods:
                return self.methods[owner, sign, selector]
            owner = self.superclasses.get(owner)
        return self.methods.get(("NSObject", sign, selector))


def main():
    ours, theirs = Declarations(OURS), Declarations(GNUSTEP)
    agreed, differing, missing = 0, [], []
    for (owner, sign, selector), types in sorted(ours.methods.items()):
        name, found = f"{sign}[{owner} {selector}]", theirs.find(owner, sign, selector)
        if found is None:
            missing.append(name)
        elif found != types:
            differing.append(f"{name}\n    ours:   {types}\n    theirs: {found}")
        else:
            agreed += 1
    for name, value in sorted(ours.constants.items()):
        if name not in theirs.constants:
            missing.append(name)
        elif theirs.constants[name] != value:
            differing.append(f"{name}\n    ours:   {value}\n    theirs: {theirs.constants[name]}")
        else:
            agreed += 1
    print("GNUstep does not have", *missing, sep="\n    ")
    for difference in differing:
        print("error: differs:", difference)
    print(f"{agreed} agree, {len(differing)} differ, {len(missing)} are not in GNUstep")
    print(f"{agreed} passed, {len(differing)} failed")
    sys.exit(1 if differing or not agreed else 0)


main()
