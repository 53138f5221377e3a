#!/usr/bin/env python3
"""Compares the shared library with what programs have been linked against, packaging/libvfoundation1.symbols. Usage:
  scripts/abi.py [LIBRARY]            fails where a linked program would no longer run, and on what is new
  scripts/abi.py --update [LIBRARY]   enters what is there now

LIBRARY is a libVFoundation.so or .a of the dev build; without it, the archive in build/dev, which holds the same objects
and is linked here. (An optimised build leaves out some vtables of interfaces.) The baseline is for x86-64 and g++ 12. It
is a symbols file as Debian's packages have it, with two kinds of comments:
  #vtable <symbol> <slots> <checksum of what is in them>
  #size <class> <bytes>
"""
import hashlib
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
BASELINE = ROOT / "packaging/libvfoundation1.symbols"
HEADER = "libVFoundation.so.1 libvfoundation1 #MINVER#"
COMPILER = os.environ.get("CXX", "c++")


def run(*command):
    return subprocess.run([str(part) for part in command], check=True, stdout=subprocess.PIPE, text=True).stdout


def demangled(names):
    return subprocess.run(["c++filt"], input="\n".join(names), check=True, stdout=subprocess.PIPE,
                          text=True).stdout.splitlines()


def public_headers():
    for path in sorted((ROOT / "foundation").rglob("*.h")):
        if path.parent.name != "internal":
            yield path.read_text(encoding="utf-8")


def exported(library):
    """The exported symbols, but for those that every program compiles itself where it needs them: functions of
    templates, constants in headers. They come and go with what the compiler inlines."""
    kinds = {}
    for line in run("nm", "-D", "--defined-only", library).splitlines():
        _, kind, name = line.split()
        if kind == "u":
            sys.exit(f"abi: {name} is unique in the process, which keeps the library from being unloaded")
        kinds[name] = kind
    of_class = r"(?:vtable for |VTT for |typeinfo for |typeinfo name for )"
    thunk = r"(?:non-virtual thunk to |virtual thunk to )"
    left_to_the_library = "|".join(
        rf"VFoundation::{name}<VFoundation::{argument}[,>]" for text in public_headers()
        for name, argument in re.findall(r"^extern template class (\w+)<([\w:]+)", text, re.MULTILINE))
    needed = re.compile(rf"{of_class}VFoundation::[\w:]+$|(?:{of_class}|{thunk})?(?:{left_to_the_library})")
    return {name for (name, kind), text in zip(kinds.items(), demangled(kinds))
            if kind not in "WwVv" or needed.match(text)}


def vtables(library, symbols):
    """What is in the slots of every exported vtable, by symbol."""
    places, functions = {}, {}
    for line in run("readelf", "-sW", library).splitlines():
        fields = line.split()
        if len(fields) < 8 or not fields[0].rstrip(":").isdigit() or fields[6] == "UND":
            continue
        address, size, kind, name = int(fields[1], 16), int(fields[2], 0), fields[3], fields[7]
        if name.startswith("_ZTV") and name in symbols:
            places[name] = range(address, address + size, 8)
        elif kind == "FUNC":
            functions[address] = min(name, functions.get(address, name))
    content = {}
    for line in run("readelf", "-rW", library).splitlines():
        fields = line.split()
        if "R_X86_64_RELATIVE" in fields:
            content[int(fields[0], 16)] = functions.get(int(fields[-1], 16), "")
        elif "R_X86_64_64" in fields:
            content[int(fields[0], 16)] = fields[4].split("@")[0]
    return {name: [content.get(address, "") for address in places[name]] for name in places}


def checksum(slots):
    # One destructor may stand for the other where they do the same.
    text = " ".join(re.sub(r"D[12]Ev$", "DEv", slot) for slot in slots)
    return hashlib.sha256(text.encode()).hexdigest()[:16]


def sizes(folder):
    """The bytes of an object of each public class that is no template."""
    names = sorted({name for text in public_headers()
                    for name in re.findall(r"(?<!>\n)^(?:class|struct) VFOUNDATION_API (?!VFOUNDATION_)(\w+)", text, re.MULTILINE)})
    lines = [f'    std::printf("{name} %zu\\n", sizeof({name}));' for name in names]
    source = folder / "sizes.cpp"
    source.write_text("\n".join(['#include "foundation/VFoundation.h"', "#include <cstdio>", "using namespace VFoundation;",
                                 "using namespace VFoundation::detail;", "int main() {", *lines, "}"]), encoding="utf-8")
    (folder / "foundation").mkdir()
    (folder / "foundation/Version.h").touch() # the build makes it
    run(COMPILER, "-std=c++20", f"-I{ROOT}", f"-I{folder}", source, "-o", folder / "sizes")
    return dict(line.split() for line in run(folder / "sizes").splitlines())


def found(library):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        if library.suffix == ".a":
            run(COMPILER, "-shared", "-o", folder / "libVFoundation.so",
                f"-Wl,--version-script={ROOT / 'foundation/exports.map'}", "-Wl,--whole-archive", library, "-Wl,--no-whole-archive")
            library = folder / "libVFoundation.so"
        symbols = exported(library)
        return symbols, vtables(library, symbols), sizes(folder)


def read_baseline():
    symbols, tables, bytes_of = {}, {}, {}
    for line in BASELINE.read_text(encoding="utf-8").splitlines() if BASELINE.exists() else []:
        fields = line.split()
        if line.startswith("#vtable"):
            tables[fields[1]] = (int(fields[2]), fields[3])
        elif line.startswith("#size"):
            bytes_of[fields[1]] = fields[2]
        elif line.startswith(" "):
            symbols[fields[0].removesuffix("@Base")] = fields[1]
    return symbols, tables, bytes_of


def write_baseline(symbols, known, tables, bytes_of):
    version = re.search(r"^    VERSION ([0-9.]+)$", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE)[1]
    lines = [HEADER]
    lines += [f" {name}@Base {known.get(name, version)}" for name in sorted(symbols)]
    lines += [f"#vtable {name} {len(tables[name])} {checksum(tables[name])}" for name in sorted(tables)]
    lines += [f"#size {name} {bytes_of[name]}" for name in sorted(bytes_of)]
    BASELINE.write_text("\n".join(lines) + "\n", encoding="utf-8")


def report(title, names):
    if names:
        print(f"{title}:")
        for text in sorted(demangled(names)):
            print(f"  {text}")


def main(arguments):
    update = "--update" in arguments
    libraries = [argument for argument in arguments if argument != "--update"]
    if len(libraries) > 1 or any(library.startswith("-") for library in libraries):
        print(__doc__)
        return 2
    if platform.machine() != "x86_64" or not run(COMPILER, "-dumpfullversion").startswith("12."):
        print("abi: the baseline is for x86-64 and g++ 12")
        return 2
    library = pathlib.Path(libraries[0]) if libraries else ROOT / "build/dev/foundation/libVFoundation.a"
    symbols, tables, bytes_of = found(library)
    known, known_tables, known_bytes = read_baseline()

    gone = [name for name in known if name not in symbols]
    changed = [name for name, (count, sum_) in known_tables.items()
               if name in tables and checksum(tables[name][:count]) != sum_]
    resized = [f"{name}: {size} bytes, now {bytes_of.get(name, 'gone')}" for name, size in known_bytes.items()
               if bytes_of.get(name) != size]
    new = [name for name in symbols if name not in known]
    longer = [name for name, slots in tables.items() if name in known_tables and len(slots) > known_tables[name][0]]
    unsized = [name for name in bytes_of if name not in known_bytes]
    report("gone, which breaks programs", gone)
    report("changed, which breaks programs", changed)
    report("changed size, which breaks programs", resized)
    report("new", new)
    report("with new virtual functions", longer)
    report("new classes", unsized)
    if update:
        write_baseline(symbols, known, tables, bytes_of)
        print(f"abi: {BASELINE.name} is up to date")
        return 0
    if gone or changed or resized or new or longer or unsized:
        print("abi: the interface differs; scripts/abi.py --update accepts what is to stay")
        return 1
    print(f"abi: {len(symbols)} symbols, {len(tables)} vtables and {len(bytes_of)} sizes are as they were")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
