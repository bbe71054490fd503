#!/usr/bin/env python3
"""Makes every form of the release notes from NEWS, their only source.

release-notes.py version            the newest version
release-notes.py date [VERSION]     its date
release-notes.py debian             debian/changelog
release-notes.py metainfo           the <releases> of the AppStream metadata
release-notes.py github [VERSION]   one version's notes in Markdown
release-notes.py --check            whether the files made from NEWS say what NEWS says
release-notes.py --write            writes them
"""
import datetime
import pathlib
import re
import sys
import xml.sax.saxutils

TOP = pathlib.Path(__file__).resolve().parent.parent
METAINFO = TOP / "packaging/linux/org.vellmoor.Vellmoor.metainfo.xml.in"
CHANGELOG = TOP / "debian/changelog"
MAINTAINER = "The Vellmoor developers <vellmoor@vellmoor.org>"


def releases():
    """(version, date, notes) of each release, newest first; a note is one line of text."""
    found = []
    for line in (TOP / "NEWS").read_text(encoding="utf-8").splitlines():
        heading = re.fullmatch(r"Vellmoor (\d+\.\d+\.\d+) \((\d{4}-\d{2}-\d{2})\)", line)
        if heading:
            found.append((heading[1], heading[2], []))
        elif line.startswith(" * "):
            found[-1][2].append(line[3:])
        elif line.startswith("   "):
            found[-1][2][-1] += " " + line.strip()
        elif line:
            sys.exit(f"NEWS: cannot read this line: {line}")
    if not found:
        sys.exit("NEWS names no release")
    return found


def wrapped(note, first, rest, width=78):
    lines, current = [], first
    for word in note.split():
        if len(current) + len(word) > width and current.strip(" *"):
            lines.append(current.rstrip())
            current = rest
        current += word + " "
    return lines + [current.rstrip()]


def debian():
    parts = []
    for version, date, notes in releases():
        # The beginning of the day: files that are newer than this get its time, or no two builds would be equal.
        day = datetime.datetime.fromisoformat(date).strftime("%a, %d %b %Y")
        body = [line for note in notes for line in wrapped(note, "  * ", "    ")]
        parts.append(f"vellmoor ({version}) unstable; urgency=medium\n\n" + "\n".join(body)
                     + f"\n\n -- {MAINTAINER}  {day} 00:00:00 +0000\n")
    return "\n".join(parts)


def metainfo():
    lines = ["  <releases>"]
    for version, date, notes in releases():
        lines += [f'    <release version="{version}" date="{date}">', "      <description>", "        <ul>"]
        lines += [f"          <li>{xml.sax.saxutils.escape(note)}</li>" for note in notes]
        lines += ["        </ul>", "      </description>", "    </release>"]
    return "\n".join(lines + ["  </releases>"])


def metainfo_file():
    return re.sub(r"  <releases>.*</releases>", lambda _: metainfo(), METAINFO.read_text(encoding="utf-8"), flags=re.S)


def release(arguments):
    wanted = arguments[0] if arguments else releases()[0][0]
    for one in releases():
        if one[0] == wanted:
            return one
    sys.exit(f"NEWS has no version {wanted}")


def main(words):
    command, arguments = (words or ["--help"])[0], words[1:]
    if command == "version":
        print(releases()[0][0])
    elif command == "date":
        print(release(arguments)[1])
    elif command == "debian":
        print(debian(), end="")
    elif command == "metainfo":
        print(metainfo())
    elif command == "github":
        print("\n".join(f"- {note}" for note in release(arguments)[2]))
    elif command == "--write":
        CHANGELOG.write_text(debian(), encoding="utf-8")
        METAINFO.write_text(metainfo_file(), encoding="utf-8")
    elif command == "--check":
        for file, text in ((CHANGELOG, debian()), (METAINFO, metainfo_file())):
            if file.read_text(encoding="utf-8") != text:
                sys.exit(f"{file.relative_to(TOP)} differs from NEWS (scripts/release-notes.py --write)")
    else:
        sys.exit(__doc__)


main(sys.argv[1:])
