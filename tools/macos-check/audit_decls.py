#!/usr/bin/env python3
"""Compares the declarations in decls/ with a description of the macOS SDK, TypeScript made from the SDK's own headers:
every class and its superclass, every selector with the kinds of its arguments and of its answer, every property,
function, constant and the value of every enumerator. What the SDK does not have fails. What that description does not
tell, since when a name is there and which answers may be nil, is compared with the table in versions.txt.
usage: audit_decls.py SDK-FOLDER [DECLS-FOLDER]"""
import json
import os
import pathlib
import re
import subprocess
import sys

from sdk_names import Sdk, block_name, kind_of_ts, split_top

HERE = pathlib.Path(__file__).resolve().parent
OLDEST = (14, 0)  # the macOS that the program must run on
# The description has Swift's names for what these are called in C.
RENAMED = {"NSOrderedAscending": ("NSComparisonResult", "Ascending"),
           "NSOrderedSame": ("NSComparisonResult", "Same"),
           "NSOrderedDescending": ("NSComparisonResult", "Descending")}
# What the description names without its value, as Apple's headers have it.
DOCUMENTED = {"NSUTF8StringEncoding": 4, "NSFileWriteOutOfSpaceError": 640, "NSFileWriteVolumeReadOnlyError": 642,
              **{name: int.from_bytes(code.encode("ascii"), "big") for name, code in
                 {"kCoreEventClass": "aevt", "kAEReopenApplication": "rapp", "kAEQuitApplication": "quit"}.items()}}
NUMBERS = {"int", "unsigned int", "long", "unsigned long", "long long", "unsigned long long", "double", "float", "short",
           "unsigned short"}


def syntax_tree(sdk, decls):
    """Clang's own reading of every header of the frameworks."""
    umbrellas = sorted(p for p in decls.glob("*/*.h") if p.stem == p.parent.name)
    source = "".join(f"#import <{p.parent.name}/{p.name}>\n" for p in umbrellas)
    command = ["clang++-19", "--target=arm64-apple-macos14.0", "-isysroot", str(sdk), "-Wno-darwin-sdk-settings", "-std=c++23",
               "-I", str(decls), "-x", "objective-c++", "-fobjc-arc", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-"]
    done = subprocess.run(command, input=source, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise SystemExit(done.stderr)
    return json.loads(done.stdout)


def own_declarations(tree, decls):
    """The top-level declarations that stand in decls. Clang names a file only where it changes."""
    current, own, spellings = None, [], str(decls) + os.sep

    def follow(place):
        nonlocal current
        for part in (place, place.get("spellingLoc", {}), place.get("expansionLoc", {})):
            current = part.get("file", current)

    def walk(node):
        follow(node.get("loc", {}))
        here = current
        for end in ("begin", "end"):
            follow(node.get("range", {}).get(end, {}))
        for inner in node.get("inner", []):
            walk(inner)
        node["where"] = here

    for node in tree["inner"]:
        walk(node)
        if (node["where"] or "").startswith(spellings):
            own.append(node)
    return own


class Audit:
    def __init__(self, sdk):
        self.sdk, self.aliases, self.interfaces, self.checked, self.faults = sdk, {}, set(), 0, []
        self.declared = {}  # name: (what its answer may be, whether it is declared as deprecated)

    def check(self, good, *what):
        self.checked += 1
        if not good:
            self.faults.append(" ".join(str(part) for part in what))

    def kind(self, node_type):
        """What a C type is in the terms of the description: (kind, name, may be nil)."""
        written, plain = node_type["qualType"], node_type.get("desugaredQualType", node_type["qualType"])
        if block := re.fullmatch(r".*\(\^(.*?)\)\((.*)\)", written):
            taken = [self.kind({"qualType": part}) for part in split_top(block[2]) if part != "void"]
            return "block", block_name(taken), "_Nullable" in block[1]
        nullable = "_Nullable" in written or "_Null_unspecified" in written
        clean = [re.sub(r"\b(_Nonnull|_Nullable|_Null_unspecified|__strong|__autoreleasing|__kindof|const|enum|struct)\b", "", text)
                 for text in (written, plain)]
        written, plain = (" ".join(text.split()) for text in clean)
        name = written
        while name in self.aliases and name not in self.sdk.enums:
            name = self.aliases[name]
        if name in self.sdk.enums:
            return "enum", name, nullable
        if written in ("BOOL", "bool") or plain == "bool":
            return "boolean", "", nullable
        if plain in NUMBERS or name in NUMBERS:
            return "number", "", nullable
        if plain == "NSString *":
            return "string", "", nullable
        # The description takes texts for these.
        if plain == "char *" or written == "SEL":
            return "string", "", nullable
        if (match := re.fullmatch(r"((?:NS|UN)\w+)(<.*>)? \*", plain)) and match[1] in self.interfaces:
            return "class", match[1], nullable
        if plain.startswith("id") or plain == "instancetype" or written == "instancetype" or "Type" in written:
            return "object", "", nullable
        if plain == "void":
            return "void", "", False
        if plain.endswith("*") or "*" in plain or written.endswith("Ref") or "[" in plain:
            return "pointer", "", nullable
        return "struct", written, nullable

    def compare(self, what, ours, theirs, answer=False, loosely=False):
        kind, name, nullable = self.kind(ours)
        their_kind, their_name, their_nullable = kind_of_ts(theirs)
        loose = {"pointer", "object"}
        alike = kind == their_kind or {kind, their_kind} <= loose or "any" in (kind, their_kind)
        # A number type of its own (NSEventMask) is described as its enumeration, or as a mere number.
        alike = alike or {kind, their_kind} == {"enum", "number"} and not (name or their_name in self.sdk.enums)
        alike = alike or f"<{their_name}>" in ours["qualType"]
        alike = alike or (kind == "object" and their_kind in ("class", "string") and answer)
        if kind == their_kind and kind in ("class", "enum", "block"):
            alike = name == their_name
        self.check(alike, what, "is", kind, name, "here and", their_kind, their_name, "in the SDK:", theirs)
        # Of answers and of C functions the description does not say what may be nil.
        if alike and not answer and not loosely and kind in ("class", "string", "object", "block") and their_kind != "pointer":
            self.check(nullable == their_nullable, what, "may" if nullable else "may not", "be nil here, in the SDK:", theirs)

    def note(self, name, node, answer=None):
        """Remembers a declaration for the comparison with the table."""
        told = None
        if answer:
            kind, _, nullable = self.kind(answer)
            # A property that turns nil into its own value never answers nil.
            nullable = nullable and "_Null_unspecified" not in answer["qualType"]
            is_object = kind in ("class", "object") or kind == "string" and "NSString" in answer.get("desugaredQualType", answer["qualType"])
            told = ("nil" if nullable else "never") if is_object else None
        marks = {inner["kind"] for inner in node.get("inner", [])}
        self.declared[name] = (told, bool(marks & {"AvailabilityAttr", "DeprecatedAttr"}))

    def compare_versions(self, table):
        for name in sorted(self.declared.keys() - table.keys()):
            self.check(False, f"versions.txt does not say since when {name} is there")
        for name in sorted(table.keys() - self.declared.keys()):
            self.check(False, f"versions.txt has {name}, which is not declared")
        for name in sorted(table.keys() & self.declared.keys()):
            since, ended, told = table[name]
            answer, is_marked = self.declared[name]
            self.check(since <= OLDEST, f"{name} is there since macOS", ".".join(map(str, since)), "only")
            self.check(is_marked == (ended is not None and ended <= OLDEST),
                       name, "is declared as deprecated, which versions.txt does not say" if is_marked
                       else f"is deprecated since macOS {'.'.join(map(str, ended or ()))}, but not declared so")
            self.check(answer == told, f"{name} answers", answer or "no object", "here and", told or "no object", "in versions.txt")

    def method(self, owner, node):
        head, *rest = node["name"].split(":")
        flat = head + "".join(part[:1].upper() + part[1:] for part in rest)
        sign = "-" if node.get("instance") else "+"
        self.note(f"{sign}[{owner} {node['name']}]", node, node["returnType"])
        found = self.sdk.member(owner, sign + flat)
        self.check(found, f"{sign}[{owner} {node['name']}] is not in the SDK")
        if not found or found.arguments is None:
            return
        parameters = [inner for inner in node.get("inner", []) if inner["kind"] == "ParmVarDecl"]
        self.check(len(parameters) == len(found.arguments), f"{sign}[{owner} {node['name']}] takes", len(found.arguments), "arguments")
        for parameter, theirs in zip(parameters, found.arguments):
            self.compare(f"{sign}[{owner} {node['name']}] {parameter.get('name')}", parameter["type"], theirs)
        self.compare(f"{sign}[{owner} {node['name']}]", node["returnType"], found.type, answer=True)

    def property(self, owner, node):
        sign = "+" if node.get("class") else "-"
        self.note(f"{owner}.{node['name']}", node, node["type"])
        found = self.sdk.member(owner, sign + node["name"])
        self.check(found, f"{owner}.{node['name']} is not in the SDK")
        if not found or found.arguments is not None:
            return
        self.check(node.get("readonly") or not found.readonly, f"{owner}.{node['name']} can only be read")
        self.compare(f"{owner}.{node['name']}", node["type"], found.type, answer=True)

    def enumerator(self, node, value):
        name = node["name"]
        self.note(name, node)
        if name in RENAMED:
            values = [self.sdk.enums[RENAMED[name][0]][RENAMED[name][1]]]
        elif name in DOCUMENTED:
            self.check(name in self.sdk.names or self.sdk.enumerators(name), f"{name} is not in the SDK")
            values = [DOCUMENTED[name]]
        else:
            values = self.sdk.enumerators(name)
        self.check(values, f"{name} is not in the SDK" if name not in self.sdk.names else f"nothing tells the value of {name}")
        if values:
            self.check(value in values, f"{name} is {value} here and {values} in the SDK")

    def enumeration(self, node):
        """Each value: the one that is written, or one more than that before."""
        value = -1
        for part in node.get("inner", []):
            if part["kind"] == "EnumConstantDecl":
                written = value_of(part)
                value = value + 1 if written is None else written
                self.enumerator(part, value)

    def visit(self, node, owner=None):
        kind, name, inner = node.get("kind", ""), node.get("name", ""), node.get("inner", [])
        if node.get("isImplicit") or kind == "ObjCInterfaceDecl" and not inner and "super" not in node:
            return
        if kind == "ObjCInterfaceDecl":
            self.note(name, node)
            self.check(name in self.sdk.classes, f"class {name} is not in the SDK")
            if name in self.sdk.classes and "super" in node:
                parents = list(self.sdk.chain(name))[1:]
                self.check(node["super"]["name"] in parents, f"{name} is no {node['super']['name']} in the SDK but", parents)
        elif kind == "ObjCProtocolDecl":
            self.check(name in self.sdk.classes or not inner, f"protocol {name} is not in the SDK")
        elif kind == "ObjCMethodDecl":
            self.method(owner, node)
        elif kind == "ObjCPropertyDecl":
            self.property(owner, node)
        elif kind == "VarDecl" and node.get("storageClass") != "static":
            self.note(name, node)
            self.check(name in self.sdk.names, f"{name} is not in the SDK")
        elif kind == "FunctionDecl" and node.get("storageClass") != "static":
            self.note(f"{name}()", node)
            self.check(name in self.sdk.functions, f"{name}() is not in the SDK")
            if name in self.sdk.functions:
                self.function(node)
        elif kind == "EnumDecl":
            self.enumeration(node)
        if kind in ("ObjCInterfaceDecl", "ObjCProtocolDecl", "LinkageSpecDecl"):
            for part in inner:
                self.visit(part, name if kind.startswith("ObjC") else owner)

    def function(self, node):
        parameters = [inner for inner in node.get("inner", []) if inner["kind"] == "ParmVarDecl"]
        theirs = self.sdk.functions[node["name"]]
        if "..." in theirs or node.get("variadic"):
            return
        listed = split_top(theirs)
        self.check(len(parameters) == len(listed), f"{node['name']}() takes", len(listed), "arguments")
        for parameter, written in zip(parameters, listed):
            self.compare(f"{node['name']}() {parameter.get('name')}", parameter["type"], written.split(": ", 1)[-1], loosely=True)


def version_of(text):
    return tuple(int(part) for part in text.split("."))


def versions(path):
    """name: (since, deprecated since or None, "nil", "never" or None), as the table has it."""
    table = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith("#"):
            continue
        found = re.fullmatch(r"([\d.]+)(?:-([\d.]+))? (?:(nil|never) )?(\S.*)", line)
        if not found or found[4] in table:
            raise SystemExit(f"{path.name}: cannot be read, or stands there twice: {line}")
        table[found[4]] = (version_of(found[1]), version_of(found[2]) if found[2] else None, found[3])
    return table


def value_of(node):
    if "value" in node:
        return int(node["value"])
    return next((value for value in map(value_of, node.get("inner", [])) if value is not None), None)


def main():
    if not 2 <= len(sys.argv) <= 3:
        raise SystemExit(__doc__)
    decls = pathlib.Path(sys.argv[2] if len(sys.argv) == 3 else HERE / "decls").resolve()
    audit = Audit(Sdk(pathlib.Path(sys.argv[1]) / "names"))
    tree = syntax_tree(sys.argv[1], decls)
    for node in tree["inner"]:
        if node.get("kind") == "TypedefDecl":
            audit.aliases[node["name"]] = node["type"]["qualType"]
        elif node.get("kind") == "ObjCInterfaceDecl":
            audit.interfaces.add(node["name"])
    for node in own_declarations(tree, decls):
        audit.visit(node)
    audit.compare_versions(versions(decls.parent / "versions.txt"))
    for fault in audit.faults:
        print("decls:", fault, file=sys.stderr)
    print(f"{audit.checked} facts of the declarations compared with the SDK and versions.txt, {len(audit.faults)} differ")
    raise SystemExit(bool(audit.faults) or audit.checked < 100)


main()
