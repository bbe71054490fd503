#!/usr/bin/env python3
"""Stands in for the linker of a Mac: looks whether every symbol of the program's own is defined by its objects and
libraries and every class and function of Apple's by a framework that is linked, and writes an empty program. What Qt and
libc++ define cannot be seen here.
usage: link.py --names FOLDER -o PROGRAM OBJECT... LIBRARY..."""
import pathlib
import re
import shlex
import struct
import sys

UNDEFINED, EXTERNAL = 0x0, 0x1
# A function in no namespace is Qt's (qHash, qt_assert), or one of the tests or of generated code.
OWN = re.compile(r"^__Z.*8vellmoor|^__Z\d+(?=\D)(?!q(?!ml_register_types_(?!Qt))|Q[A-Z])")


FRAMEWORKS = ("Foundation", "AppKit", "UserNotifications", "CoreGraphics", "CoreFoundation", "CoreServices", "ApplicationServices")
BROUGHT_ALONG = {"CoreFoundation": "Foundation"}  # Foundation passes its symbols on


def homes_of(names):
    """The frameworks that the description of the SDK names for each symbol."""
    homes = {}
    for framework in FRAMEWORKS:
        text = (names / f"{framework}.d.ts").read_text(encoding="utf-8")
        for kind, name in re.findall(r"^declare (class|function|const|let|var) (\w+)", text, re.M):
            homes.setdefault(f"_OBJC_CLASS_$_{name}" if kind == "class" else f"_{name}", set()).add(framework)
    return homes


def unlinked(wanted, defined, linked, names):
    """(symbol, its framework) of what no framework on the command line has."""
    homes = homes_of(names)
    for name in sorted(wanted):
        symbol = name.replace("_OBJC_METACLASS_$_", "_OBJC_CLASS_$_")
        if name in defined or symbol == "_OBJC_CLASS_$_NSObject" or not (symbol in homes or symbol.startswith("_OBJC_CLASS_$_")):
            continue
        found = homes.get(symbol, set())
        if not any(home in linked or BROUGHT_ALONG.get(home) in linked for home in found):
            yield name, " or ".join(sorted(found)) or "a framework that the check does not know"


def objects_of(path):
    """The Mach-O files in an object file or an archive."""
    data = open(path, "rb").read()
    if not data.startswith(b"!<arch>\n"):
        yield path, data
        return
    at = 8
    while at + 60 <= len(data):
        name, size = data[at:at + 16].decode().strip(), int(data[at + 48:at + 58])
        body = data[at + 60:at + 60 + size]
        if name.startswith("#1/"):  # the name stands before the contents
            length = int(name[3:])
            name, body = body[:length].rstrip(b"\0").decode(), body[length:]
        if name not in ("/", "//") and not name.startswith("__.SYMDEF"):  # indexes and tables of names
            yield f"{path}({name})", body
        at += 60 + size + size % 2


def symbols_of(where, data):
    """(name, defined) of every external symbol; local ones are not looked at."""
    magic, _, _, _, commands = struct.unpack_from("<5I", data)
    if magic != 0xFEEDFACF:
        raise SystemExit(f"{where}: not an object for a 64-bit Mac")
    at = 32
    for _ in range(commands):
        command, size = struct.unpack_from("<2I", data, at)
        if command == 2:
            table, count, strings, _ = struct.unpack_from("<4I", data, at + 8)
            for index in range(count):
                text, kind, _, _, value = struct.unpack_from("<IBBHQ", data, table + 16 * index)
                if kind & 0xE0 or not kind & EXTERNAL:
                    continue
                end = data.index(b"\0", strings + text)
                name = data[strings + text:end].decode()
                yield name, (kind & 0x0E) != UNDEFINED or value != 0
        at += size


def main():
    arguments = sys.argv[1:]
    if len(arguments) < 5 or arguments[0] != "--names" or arguments[2] != "-o":
        raise SystemExit(__doc__)
    names, program, inputs = pathlib.Path(arguments[1]), arguments[3], []
    for item in arguments[4:]:
        inputs += shlex.split(open(item[1:], encoding="utf-8").read()) if item.startswith("@") else [item]
    defined, wanted, unknown = set(), {}, []
    skip, linked = False, set()
    for item in inputs:
        if skip:
            skip = False
            linked.add(item)
        elif item == "-framework":
            skip = True
        elif item.endswith((".o", ".a")) and not item.startswith("/usr/"):
            for where, data in objects_of(item):
                for name, is_defined in symbols_of(where, data):
                    if is_defined:
                        defined.add(name)
                    else:
                        wanted.setdefault(name, where)
        elif item.startswith("-l"):
            unknown.append(item)
    missing = sorted(name for name in wanted if name not in defined and OWN.match(name))
    for name in missing:
        print(f"{program}: no definition of {name}, which {wanted[name]} uses")
    for item in unknown:
        print(f"{program}: there is no library {item} on a Mac")
    strangers = list(unlinked(wanted, defined, linked, names))
    for name, framework in strangers:
        print(f"{program}: {name.removeprefix('_OBJC_CLASS_$_')} is in {framework}, which is not linked")
    if missing or unknown or strangers:
        raise SystemExit(1)
    open(program, "w").close()


main()
