#!/usr/bin/env python3
"""Write .tbd stubs from our own list of the external symbols the SDK may use (link gate only)."""
import pathlib, subprocess, sys
out = pathlib.Path(sys.argv[1]); cur = None; libs = {}
for line in pathlib.Path(__file__).with_name("symbols.txt").read_text().splitlines():
    line = line.split("#")[0].strip()
    if not line: continue
    if line.startswith("["): cur = libs.setdefault(line[1:-1], {"classes": [], "symbols": []}); continue
    cur["classes" if line.startswith("@") else "symbols"].append(line.lstrip("@"))
# libc++: what Debian's own libc++/libc++abi 19 export (the phone's is the same project; the availability gate covers versions)
for so in ("libc++.so.1", "libc++abi.so.1"):
    nm = subprocess.run(["llvm-nm-19", "-D", "--defined-only", "--format=just-symbols", f"/usr/lib/llvm-19/lib/{so}"], capture_output=True, text=True, check=True).stdout
    libs["libc++"]["symbols"] += ["_" + x.split("@")[0] for x in nm.split() if x.startswith(("_Z", "__cxa", "__gxx", "__dynamic_cast"))]
libs["libc++"]["symbols"] = sorted(set(libs["libc++"]["symbols"]))
for name, l in libs.items():
    fw = name.endswith(".framework"); base = name.removesuffix(".framework")
    path = out / "System/Library/Frameworks" / name / f"{base}.tbd" if fw else out / "usr/lib" / f"{name}.tbd"
    inst = f"/System/Library/Frameworks/{name}/{base}" if fw else f"/usr/lib/{'libSystem.B' if name == 'libSystem' else 'libobjc.A' if name == 'libobjc' else 'libc++.1'}.dylib"
    path.parent.mkdir(parents=True, exist_ok=True)
    t = f"--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-ios, arm64-ios-simulator, x86_64-ios-simulator ]\ninstall-name: '{inst}'\nexports:\n  - targets: [ arm64-ios, arm64-ios-simulator, x86_64-ios-simulator ]\n"
    if l["symbols"]: t += "    symbols: [ " + ", ".join(f"'{s}'" for s in l["symbols"]) + " ]\n"
    if l["classes"]: t += "    objc-classes: [ " + ", ".join(l["classes"]) + " ]\n"
    path.write_text(t + "...\n")
