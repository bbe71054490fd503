"""The window's texts in both languages, read from the program's own tables; the Chinese text is the key."""

import pathlib
import re

LANGUAGES = ("en", "zh")
_TEXTS = pathlib.Path(__file__).resolve().parents[2] / "src/model/texts"
_STRING = r'"((?:[^"\\]|\\.)*)"'
_CHINESE = re.compile("[\u3400-\u9fff]")


def _entries(file, fields):
    pattern = re.compile(r"\{" + r",\s*".join([_STRING] * fields) + r"\}")
    return [tuple(text.replace('\\"', '"') for text in entry)
            for entry in pattern.findall((_TEXTS / file).read_text(encoding="utf-8"))]


_FURTHER = _entries("FurtherTexts.cpp", 3)
_ENGLISH = dict(_entries("EnglishTable.cpp", 2)) | {chinese: english for chinese, english, _ in _FURTHER}
_ON_LINUX = {replaced: (chinese, english) for chinese, english, replaced in _FURTHER if replaced}


def text(key, language):
    """As the program shows it on Linux. Raises KeyError for a text that the program does not have."""
    chinese, english = _ON_LINUX.get(key, (key, _ENGLISH[key]))
    return english if language == "en" else chinese


def beginning(key, language):
    """The part of a text before its first argument."""
    return re.split("%[@d]", text(key, language))[0]


def is_chinese(shown):
    return _CHINESE.search(shown) is not None


def words(shown):
    """The words of Latin letters in a text."""
    return set(re.findall(r"[A-Za-z][A-Za-z]+", shown))
