"""The reasons why some changes are not tried."""

import re
from pathlib import Path

FOLDER = Path(__file__).with_name("reasons")
PARTS = 4  # sources, line, change, and then the reason


def pattern(text):
    return re.compile("|".join(".*".join(map(re.escape, part.split("*"))) for part in text.split(" or ")))


def parse(text):
    """The patterns of every entry."""
    entries = []
    for block in text.split("\n\n"):
        lines = [line for line in block.split("\n") if line and not line.startswith("#")]
        if not lines:
            continue
        if len(lines) < PARTS:
            raise ValueError(f"an entry needs {PARTS} lines: {lines[0]}")
        entries.append([pattern(line) for line in lines[: PARTS - 1]])
    return entries


def all_reasons():
    """The patterns of every entry of every file."""
    return [entry for file in sorted(FOLDER.glob("*.txt")) for entry in parse(file.read_text())]


def has_reason(mutation, source, entries):
    line = source.split("\n")[mutation.line - 1].strip()
    described = (mutation.file, line, mutation.change())
    return any(all(part.fullmatch(text) for part, text in zip(entry, described)) for entry in entries)
