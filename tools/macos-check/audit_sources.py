#!/usr/bin/env python3
"""Reads what the compiler lets pass in the sources of the Mac's side: selectors in texts that no class has, methods that
nobody calls since Apple's classes call them otherwise, a function that sends messages without a pool of its own, AppKit
outside the window's side, declarations that nothing uses.
usage: audit_sources.py SDK-FOLDER ROOT"""
import pathlib
import re
import sys

from sdk_names import Sdk

HERE = pathlib.Path(__file__).resolve().parent
# Workers may call these of AppKit: its documentation says so.
FOR_EVERY_THREAD = {"NSWorkspace", "NSRunningApplication"}
# The compiler makes calls of them: literals, loops.
BY_COMPILER = {"NSConstantString", "arrayWithObjects:count:", "countByEnumeratingWithState:objects:count:"}
MESSAGE = re.compile(r"\[[A-Za-z_][\w.]*(?: alloc\])? ?\w+|\b(?:NS|UN)[A-Z]\w*\.\w|\b(?:NS|UN)[A-Z]\w*\* ?\w+ =")


def without_comments(text):
    """The same text, lines and columns kept, without comments."""
    blank = lambda found: found[0] if found[0][0] in "\"'" else re.sub(r"[^\n]", " ", found[0])
    return re.sub(r'"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)*\'|//[^\n]*|/\*.*?\*/', blank, text, flags=re.S)


def functions_of(text):
    """(first line, name, body) of each function at the left margin that others may call: what stands in a namespace
    without a name runs in its caller's pool, a method of an AppKit object in AppKit's."""
    lines, at, hidden = text.split("\n"), 0, 0
    while at < len(lines):
        line = lines[at]
        if line.startswith(("namespace {", "@implementation", "@interface")):
            hidden += 1
        elif line.startswith(("} // namespace", "@end")) and "vellmoor" not in line:
            hidden = max(0, hidden - 1)
        elif re.match(r"[A-Za-z].*\(", line) and not line.startswith(("namespace", "using", "static_assert", "template")):
            end = at
            while end < len(lines) and not lines[end].startswith("}") and not (end == at and line.rstrip().endswith(("}", ";"))):
                end += 1
            name = re.search(r"([\w:~]+)\(", line)
            if not hidden and end > at and name:
                yield at + 1, name[1], "\n".join(lines[at:end])
            at = end
        at += 1


def files_below(folder):
    return sorted(path for path in folder.rglob("*") if path.is_file())


def native_sources(root):
    for folder in ("src/platform/macos", "src/app/macos", "src/walk/macos"):
        yield from files_below(root / folder)


def selector_faults(root, sdk):
    """A text such as "performClose:" is sent as a message: some class must have it, with one argument."""
    known = {member[1:] for _, members in sdk.classes.values() for member, kind in members.items()
             if kind.arguments is not None and len(kind.arguments) == 1}
    for source in files_below(root / "src/app/macos"):
        for number, line in enumerate(without_comments(source.read_text(encoding="utf-8")).split("\n"), 1):
            for name in re.findall(r'"([a-z][A-Za-z]*):"', line):
                if name not in known:
                    yield f"{source.relative_to(root)}:{number}: no class has a method {name}:"


def pool_faults(root):
    for source in native_sources(root):
        if source.suffix != ".mm":
            continue
        for number, name, body in functions_of(without_comments(source.read_text(encoding="utf-8"))):
            if MESSAGE.search(body) and "@autoreleasepool" not in body:
                yield f"{source.relative_to(root)}:{number}: {name} sends messages without a pool of its own"


def window_faults(root, names):
    """Classes of AppKit belong to the main thread, where the platform's functions are not called."""
    for source in files_below(root / "src/platform/macos"):
        for number, line in enumerate(without_comments(source.read_text(encoding="utf-8")).split("\n"), 1):
            for name in re.findall(r"\bNS[A-Z]\w+", line):
                if name in names and name not in FOR_EVERY_THREAD:
                    yield f"{source.relative_to(root)}:{number}: {name} belongs to the window's side, in src/app/macos"


def window_names(sdk_folder):
    read = lambda name: set(re.findall(r"^declare (?:class|const|function) (\w+)",
                                       (sdk_folder / "names" / f"{name}.d.ts").read_text(encoding="utf-8"), re.M))
    return read("AppKit") - read("Foundation")


def selectors_sent(text):
    """The selectors of the messages in brackets. A subscript or a lambda's captures look like one and do no harm."""
    groups, sent = [[]], set()
    for token in re.findall(r'@?"(?:[^"\\\n]|\\.)*"|@selector\([\w:]*\)|::|\w+|\S', text):
        if token in "[({":
            groups.append([])
        elif token in "])}" and len(groups) > 1:
            group = groups.pop()
            if token == "]":
                sent.add(selector_of(group))
            groups[-1].append("()")
        else:
            groups[-1].append(token)
    return sent


def selector_of(tokens):
    """Of the words between two brackets, without what stands in brackets of its own."""
    parts, choices = [], 0
    for before, token in zip([""] + tokens, tokens):
        if token == "?":
            choices += 1
        elif token == ":" and choices:
            choices -= 1
        elif token == ":":
            parts.append(before + ":")
    return "".join(parts) if parts else tokens[-1] if tokens else ""


def declared_names(text):
    """(name, how a use of it may be spelt) of every method, property, function, constant and class of a header."""
    text = re.sub(r"API_\w+\([^;]*\)\)|NS_RETURNS_INNER_POINTER", "", without_comments(text))
    text = re.sub(r"^#.*$", "", text, flags=re.M)
    for found in re.finditer(r"^@property(\([^)]*\))?[^;]*?(\w+)\s*;", text, re.M):
        getter = re.search(r"getter=(\w+)", found[1] or "")
        setter = "set" + found[2][0].upper() + found[2][1:] + ":"
        yield found[2], {found[2], "." + found[2], setter} | ({getter[1]} if getter else set())
    for found in re.finditer(r"^[-+] \([^)]*\)\s*([^;]+);", text, re.M):
        name = selector_declared(found[1])
        yield name, {name} if ":" in name else {name, "." + name}
    for found in re.finditer(r"^(?:FOUNDATION_EXPORT|CF_EXPORT)[^;(]*?(\w+)\s*[(;]", text, re.M):
        yield found[1], {found[1]}
    for found in re.finditer(r"^static inline \w+ (NS\w+)\(|^@interface (\w+)", text, re.M):
        yield found[1] or found[2], {found[1] or found[2]}


def methods_of(text):
    """(line, selector) of every method in an implementation."""
    for body in re.finditer(r"^@implementation\b.*?^@end", text, re.M | re.S):
        for found in re.finditer(r"^[-+] \([^)]*\)\s*([^{;]+?)\s*\{", body[0], re.M):
            yield text.count("\n", 0, body.start() + found.start()) + 1, selector_declared(found[1])


def selector_declared(signature):
    """Of a method's name and arguments, as it is declared."""
    bare = re.sub(r"\([^()]*(?:\([^()]*(?:\([^()]*\)[^()]*)*\)[^()]*)*\)", "", signature)
    return "".join(re.findall(r"\w+:", bare)) or bare.strip()


def uncalled_faults(root):
    """A method that the file does not send itself is for Apple's classes: one of them, or of their protocols, has it. The
    compiler does not know whether an optional one is misspelt."""
    apples = {name for header in sorted((root / "tools/macos-check/decls").rglob("*.h"))
              for name, _ in declared_names(header.read_text(encoding="utf-8"))}
    for source in native_sources(root):
        text = without_comments(source.read_text(encoding="utf-8"))
        known = apples | selectors_sent(text) | set(re.findall(r"@selector\(([\w:]+)\)", text))
        for number, name in methods_of(text):
            if name not in known:
                yield f"{source.relative_to(root)}:{number}: nobody calls {name}"


def unused_faults(root):
    sources = [path for folder in ("src", "tests") for path in (root / folder).rglob("*")
               if path.suffix in (".mm", ".h", ".cpp") and "macos" in path.parts]
    used = BY_COMPILER.copy()
    for path in sources:
        text = without_comments(path.read_text(encoding="utf-8"))
        used |= {name for _, name in methods_of(text)} | selectors_sent(text) | set(re.findall(r"(?<=[\w\])])(\.\w+)\b(?!\()", text)) | set(re.findall(r"\b(?:NS|UN|CG|kCG|kCF|os_)\w+", text))
    headers = sorted((root / "tools/macos-check/decls").rglob("*.h"))
    inside = "\n".join(without_comments(header.read_text(encoding="utf-8")) for header in headers)
    for header in headers:
        for name, spellings in declared_names(header.read_text(encoding="utf-8")):
            is_type = name[:2] in ("NS", "UN", "CG") and len(re.findall(rf"\b{name}\b", inside)) > 1
            if not spellings & used and not is_type:
                yield f"decls/{header.relative_to(root / 'tools/macos-check/decls')}: nothing uses {name}"


def main():
    if len(sys.argv) != 3:
        raise SystemExit(__doc__)
    sdk_folder, root = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    sdk = Sdk(sdk_folder / "names")
    faults = [*selector_faults(root, sdk), *uncalled_faults(root), *pool_faults(root), *window_faults(root, window_names(sdk_folder)), *unused_faults(root)]
    for fault in faults:
        print(fault, file=sys.stderr)
    raise SystemExit(bool(faults))


main()
