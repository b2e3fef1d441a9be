#!/usr/bin/env python3
"""Usage: coverage.py GCOVR.JSON [FILE...]: lines and branches that ran, by folder of src/; then what did not run in the
files, or parts of their paths, that are named."""

import json
import sys
from collections import defaultdict

FOLDERS = ["base", "messages", "platform", "mus", "pagetext", "repair", "input", "sort", "analysis", "conversion",
           "diagnostics", "drawing", "shell", "verify", "survey"]


def folder_of(file):
    return file.split("/")[1]


def percent(part, whole):
    return f"{100 * part / whole:6.1f} %" if whole else "     - "


def print_folders(files):
    sums = defaultdict(lambda: [0, 0, 0, 0])
    for file in files:
        for line in file["lines"]:
            if line["gcovr/noncode"]:
                continue
            branches = line["branches"]
            found = (1, line["count"] > 0, len(branches), sum(branch["count"] > 0 for branch in branches))
            for name in (folder_of(file["file"]), "all"):
                sums[name] = [old + new for old, new in zip(sums[name], found)]
    print(f"{'folder':<12}{'lines':>7}{'run':>7}{'':>9}{'branches':>11}{'taken':>7}")
    for name in [*FOLDERS, "all"]:
        lines, run, branches, taken = sums[name]
        print(f"{name:<12}{lines:>7}{run:>7} {percent(run, lines)}{branches:>11}{taken:>7} {percent(taken, branches)}")


def print_gaps(file):
    try:
        with open(file["file"], encoding="utf-8") as opened:
            text = opened.read().split("\n")
    except FileNotFoundError:
        text = []
    for line in file["lines"]:
        number = line["line_number"]
        missed = sum(branch["count"] == 0 for branch in line["branches"])
        if line["gcovr/noncode"] or line["count"] and not missed:
            continue
        what = "not run" if not line["count"] else f"{missed} of {len(line['branches'])} branches not taken"
        source = text[number - 1].strip() if number <= len(text) else ""
        print(f"{file['file']}:{number}: {what}: {source}")


def main():
    with open(sys.argv[1], encoding="utf-8") as opened:
        files = json.load(opened)["files"]
    files.sort(key=lambda file: (FOLDERS.index(folder_of(file["file"])), file["file"]))
    print_folders(files)
    for file in files:
        if any(wanted in file["file"] for wanted in sys.argv[2:]):
            print_gaps(file)


if __name__ == "__main__":
    main()
