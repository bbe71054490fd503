"""What the macOS SDK declares, read from TypeScript that was made from its headers."""
import re
from collections import namedtuple

# arguments: a list of types for a method, None for a property; type: of the answer or the property
Member = namedtuple("Member", "arguments type readonly")

CLASS = re.compile(r"^(?:declare )?(?:class|interface) (\w+)(?:<.*?>)?(?: extends (\w+))?[^{\n]*\{\n(.*?)^\}", re.M | re.S)
METHOD = re.compile(r"^  (static )?(?!get |set )([A-Za-z_$][\w$]*)\??(?:<.*?>)?\((.*)\): (.*);$", re.M)
PROPERTY = re.compile(r"^  (static )?(readonly |get )?([A-Za-z_$][\w$]*)\??(?:\(\))?: (.*);$", re.M)
SETTER = re.compile(r"^  (static )?set ([A-Za-z_$][\w$]*)\(", re.M)


def split_top(text):
    """The parts between commas that stand in no bracket."""
    parts, depth, start = [], 0, 0
    for at, letter in enumerate(text):
        if letter in "(<[{":
            depth += 1
        elif letter in ")]}" or letter == ">" and text[at - 1] != "=":
            depth -= 1
        elif letter == "," and depth == 0:
            parts.append(text[start:at].strip())
            start = at + 1
    rest = text[start:].strip()
    return parts + [rest] if rest else parts


def block_name(arguments):
    """The kinds of what a block is called with, as one text."""
    return ", ".join(f"{kind} {name}".strip() for kind, name, _ in arguments)


def kind_of_ts(text):
    """(kind, name, may be null) of a type."""
    nullable = text.endswith("| null")
    text = text.removesuffix("| null").strip()
    if match := re.fullmatch(r"\((.*)\) => \w+", text):
        return "block", block_name(kind_of_ts(part.split(": ", 1)[1]) for part in split_top(match[1])), nullable
    if match := re.fullmatch(r"interop\.Enum<typeof (\w+)>", text):
        return "enum", match[1], nullable
    first = re.split(r"[<\s]", text)[0]
    if first in ("string", "boolean", "void"):
        return first, "", nullable
    if first in ("number", "bigint"):
        return "number", "", nullable
    if first.startswith("interop.Pointer"):
        return "pointer", "", nullable
    if first in ("this", "InstanceType", "interop.Object", "interop.ObjectType"):
        return "object", "", nullable
    if re.fullmatch(r"(NS|UN)\w+", first):
        return ("struct" if first in ("NSRange",) else "class"), first, nullable
    if first.endswith("Type"):
        return "object", "", nullable
    return "struct", first, nullable


class Sdk:
    def __init__(self, folder):
        self.classes, self.names, self.functions, self.enums = {}, set(), {}, {}
        for path in sorted(folder.glob("*.d.ts")):
            self.read(path.read_text(encoding="utf-8"))

    def read(self, text):
        self.names.update(re.findall(r"^declare (?:const|let|var) (\w+):", text, re.M))
        self.functions.update(re.findall(r"^declare function (\w+)(?:<.*?>)?\((.*)\): ", text, re.M))
        for name, body in re.findall(r"^declare const (\w+): \{\n(.*?)^\};", text, re.M | re.S):
            self.enums.setdefault(name, {}).update(
                (key, int(value)) for key, value in re.findall(r"^  (\w+): (-?\d+)", body, re.M))
        for name, parent, body in CLASS.findall(text):
            entry = self.classes.setdefault(name, ["", {}])
            entry[0] = entry[0] or (parent if parent != "NativeObject" else "")
            for static, member, arguments, answer in METHOD.findall(body):
                types = [part.split(": ", 1)[1] for part in split_top(arguments) if not part.startswith("this:")]
                entry[1][("+" if static else "-") + member.rstrip("$")] = Member(types, answer, False)
            written = set(SETTER.findall(body))
            for static, access, member, kind in PROPERTY.findall(body):
                fixed = access == "readonly " or access == "get " and (static, member) not in written
                entry[1].setdefault(("+" if static else "-") + member.rstrip("$"), Member(None, kind, fixed))

    def chain(self, name):
        while name in self.classes:
            yield name
            name = self.classes[name][0]

    def member(self, owner, member):
        return next((self.classes[name][1][member] for name in self.chain(owner) if member in self.classes[name][1]), None)

    def enumerators(self, name):
        """The values of an enumerator: its name is the beginning of its enumeration's and its own key."""
        bare, best, values = name.removeprefix("k"), 1, set()
        for enum, keys in self.enums.items():
            for key, value in keys.items():
                prefix = bare.removesuffix(key)
                if prefix != bare and enum.startswith(prefix) and len(prefix) >= best:
                    values = {value} if len(prefix) > best else values | {value}
                    best = len(prefix)
        return sorted(values)
