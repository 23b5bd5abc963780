#!/usr/bin/env python3
"""Compare our hand-written Foundation declarations with Debian's independent gnustep-base headers (libclang)."""
import pathlib, re, sys
from clang import cindex
from clang.cindex import CursorKind as K
GATE = pathlib.Path(__file__).resolve().parent.parent
G = "/usr/lib/gcc/x86_64-linux-gnu/12/include"
RES = ["-resource-dir", "/usr/lib/llvm-19/lib/clang/19"]
BASE = ["-x", "objective-c", "-fblocks", "-fobjc-arc"] + RES
OURS = BASE + ["-fobjc-runtime=ios-15.0", "-isystem", str(GATE / "decl")]
GNU = BASE + ["-fobjc-runtime=gnustep-1.9", "-I" + str(GATE / "runtime/arcshim/include"), "-D_NATIVE_OBJC_EXCEPTIONS", "-DGNUSTEP_BASE_LIBRARY=1", "-isystem", "/usr/include/GNUstep", "-idirafter", G]
def norm(t):
    t = t.get_canonical()
    if t.get_declaration().kind == K.ENUM_DECL: return "integer"
    s = t.spelling
    if s in ("unsigned long", "long", "int", "unsigned int"): return "integer"
    s = re.sub(r"\b(_Nonnull|_Nullable|_Null_unspecified|__strong|__autoreleasing|__unsafe_unretained|__weak|const|__kindof|struct)\b", "", s)
    for _ in range(3): s = re.sub(r"<[^<>]*>", "", s)
    s = re.sub(r"\b(BOOL|signed char|unsigned char|_Bool|bool)\b", "BOOL", s)
    s = re.sub(r"\b(instancetype|ObjectType|KeyType|ElementT|ValT|KeyT)\b", "id", s)
    return re.sub(r"\s+", "", s).replace("[]", "*")
def load(args):
    tu = cindex.Index.create().parse("x.m", args=args, unsaved_files=[("x.m", "#import <Foundation/Foundation.h>\n")])
    errs = [d for d in tu.diagnostics if d.severity >= 3]
    if errs: print("parse errors:", [str(e) for e in errs[:3]])
    methods, enums, sup = {}, {}, {}
    def methods_of(c, name):
        for m in c.get_children():
            if m.kind in (K.OBJC_INSTANCE_METHOD_DECL, K.OBJC_CLASS_METHOD_DECL):
                methods[(name, "-" if m.kind == K.OBJC_INSTANCE_METHOD_DECL else "+", m.spelling)] = (norm(m.result_type), tuple(norm(a.type) for a in m.get_arguments()), m.location)
            if m.kind == K.OBJC_SUPER_CLASS_REF: sup[name] = m.spelling
    for c in tu.cursor.get_children():
        if c.kind in (K.OBJC_INTERFACE_DECL, K.OBJC_PROTOCOL_DECL): methods_of(c, c.spelling)
        elif c.kind == K.OBJC_CATEGORY_DECL:
            owner = next((x.spelling for x in c.get_children() if x.kind == K.OBJC_CLASS_REF), "?"); methods_of(c, owner)
        elif c.kind == K.ENUM_DECL:
            enums.update({e.spelling: e.enum_value for e in c.get_children() if e.kind == K.ENUM_CONSTANT_DECL})
    return methods, enums, sup
ours, oe, _ = load(OURS); gnu, ge, gsup = load(GNU)
def find(c, pm, sel):
    while c:
        if (c, pm, sel) in gnu: return gnu[(c, pm, sel)]
        c = gsup.get(c)
    return gnu.get(("NSObject", pm, sel))
ok, bad, missing = 0, [], []
for (c, pm, sel), sig in sorted(ours.items(), key=lambda x: x[0]):
    g = find(c, pm, sel)
    if g is None: missing.append(f"{pm}[{c} {sel}]")
    elif g[:2] != sig[:2]: bad.append(f"{pm}[{c} {sel}]\n     ours    {sig[:2]}\n     gnustep {g[:2]}")
    else: ok += 1
print("not in gnustep-base:", *missing, sep="\n  "); print("differ:", *bad, sep="\n  ")
e_ok = [n for n in oe if n in ge and oe[n] == ge[n]]; e_bad = [n for n in oe if n in ge and oe[n] != ge[n]]
print(f"methods: {ok} agree, {len(bad)} differ, {len(missing)} not in gnustep-base; enum constants: {len(e_ok)} agree, {len(e_bad)} differ {e_bad}")
