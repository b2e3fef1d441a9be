#!/usr/bin/env python3
"""Proves the proof: changes analysis, conversion and writer in small ways, one at a time, converts groups of pages with
each changed program, and lets `kivsys verify` of the unchanged program look at what it has written.

For every change that alters a report, a verdict or a result, the proof must say NO. Works on a copy of the tree in
build/mutate/proof.
"""

import argparse
import os
import random
import re
import shutil
import sys
import time
from itertools import zip_longest
from pathlib import Path

sys.dont_write_bytecode = True  # leave nothing between the sources

import mutate
from mutations import mutations
from proof_runs import Group, outcome_of, right_files
from reasons import all_reasons, has_reason

FOLDER = mutate.FOLDER / "proof"
FEWEST = 60  # changes that alter a result
GROUPS = 80

# What writes reports, verdicts and results.
CHANGED = ["src/analysis/*.cpp", "src/conversion/*.cpp", "src/sort/sort_on_instrument.cpp", "src/mus/writer.cpp",
           "src/mus/page_encoding.cpp", "src/mus/sort_item_table.cpp"]
# Of these, what only developers see.
NOT_CHANGED = ["src/conversion/dump_memory.cpp"]


def changed_files():
    files = sorted(str(path.relative_to(mutate.ROOT)) for pattern in CHANGED for path in mutate.ROOT.glob(pattern))
    return [file for file in files if file not in NOT_CHANGED]


def chosen_changes(sources, count, seed):
    """Changes of all the sources in turn, the same for the same seed; those that have no effect are left out."""
    reasons = all_reasons()
    piles = []
    for file, source in sources.items():
        pile = [change for change in mutations(file, source) if not has_reason(change, source, reasons)]
        random.Random(f"{seed} {file}").shuffle(pile)
        piles.append(pile)
    in_turn = [change for row in zip_longest(*piles) for change in row if change is not None]
    order = list(sources)
    # File by file, because leaving a file compiles it once more.
    return sorted(in_turn[:count], key=lambda change: (order.index(change.file), change.start, change.new))


class ProgramCopy(mutate.WorkingCopy):
    """A copy of the tree in which the console program is built."""

    def __init__(self, folder):
        super().__init__(0, False)
        self.folder = folder
        self.tree = folder / "tree"
        self.build = self.tree / "build" / "program"
        self.log = folder / "build.log"
        self.program = self.build / "apps" / "kivsys" / "kivsys"
        self.unchanged = folder / "kivsys.unchanged"

    def make(self, *targets):
        with open(self.log, "a") as log:
            return mutate.call(["ninja", f"-j{os.cpu_count()}", "-C", str(self.build), *targets], self.tree,
                               6 * mutate.BUILD_LIMIT, log) == 0

    def prepare(self, groups):
        """Builds the unchanged program, and writes the groups. Returns their folder."""
        self.refresh()
        configure = ["cmake", "-G", "Ninja", "-B", str(self.build), "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O0",
                     "-DKIV_TESTS=ON", "-DKIV_JOINED=OFF", "--log-level=WARNING"]
        with open(self.log, "w") as log:
            configured = mutate.call(configure, self.tree, mutate.BUILD_LIMIT, log) == 0
        if not configured or not self.make("kivsys", "write_groups"):
            sys.exit(f"prove-proof: the unchanged tree does not build: {self.log}")
        shutil.copy2(self.program, self.unchanged)
        pages = self.folder / "groups"
        shutil.rmtree(pages, ignore_errors=True)
        with open(self.log, "a") as log:
            if mutate.call([str(self.build / "tests" / "write_groups"), str(pages), str(groups)], self.tree,
                           mutate.BUILD_LIMIT, log) != 0:
                sys.exit(f"prove-proof: the groups cannot be written: {self.log}")
        return pages

    def built_with(self, change, source):
        """Whether the program compiles with the change. The source is restored at once."""
        path = self.tree / change.file
        path.write_text(change.applied(source))
        try:
            return self.make("kivsys")
        finally:
            path.write_text(source)


def brief(finding):
    """A finding without the folders of the runs."""
    return re.sub(r"\\[^\s\"=]*\\runs\\\d+\\", "", finding, flags=re.IGNORECASE)[:140]


class Table:
    """The changes and what became of them, a line each."""

    def __init__(self):
        self.compiled = self.altering = 0
        self.missed = []

    def add(self, change, outcome):
        """No outcome for a change that does not compile."""
        if outcome is None:
            self.line(change, "does not compile")
            return
        self.compiled += 1
        if not outcome.altered:
            self.line(change, "alters nothing")
            return
        self.altering += 1
        if outcome.missed:
            self.missed.append(change)
            self.line(change, f"MISSED in {len(outcome.missed)} of {len(outcome.altered)} groups: "
                              f"{', '.join(outcome.missed)}")
        else:
            groups = "1 group, on which it does not end" if outcome.is_endless and len(outcome.altered) == 1 else \
                f"all {len(outcome.altered)} groups that it alters"
            self.line(change, f"NO in {groups}: {brief(outcome.finding)}")

    @staticmethod
    def line(change, text):
        print(f"{change}\n    {text}", flush=True)

    def summary(self):
        return (f"{self.compiled} changes compile, {self.altering} of them alter reports, verdicts or results; "
                f"{len(self.missed)} are missed")

    def is_proved(self, fewest):
        return not self.missed and self.altering >= fewest


def prove(options):
    started = time.monotonic()
    sources = {file: (mutate.ROOT / file).read_text() for file in options.files or changed_files()}
    changes = chosen_changes(sources, options.changes, options.seed)
    if options.list:
        print(*changes, sep="\n")
        return True
    FOLDER.mkdir(parents=True, exist_ok=True)
    copy = ProgramCopy(FOLDER)
    pages = copy.prepare(options.groups)
    runs = FOLDER / "runs"
    shutil.rmtree(runs, ignore_errors=True)
    groups = [Group(folder, runs) for folder in sorted(pages.iterdir())]
    right = right_files(groups, copy.unchanged)
    proving = Path(options.proof).resolve() if options.proof else copy.unchanged
    print(f"{len(changes)} changes, {len(groups)} groups with {sum(len(files) for files in right.values())} files",
          flush=True)
    table = Table()
    for change in changes:
        compiles = copy.built_with(change, sources[change.file])
        table.add(change, outcome_of(groups, right, copy.program, proving) if compiles else None)
    print(table.summary() + f"; {time.monotonic() - started:.0f} s")
    if not table.missed and table.altering < options.fewest:
        print(f"too few: {options.fewest} changes must alter something")
    return table.is_proved(options.fewest)


def main():
    parser = argparse.ArgumentParser(prog="./dev prove-proof", description=__doc__)
    parser.add_argument("files", nargs="*", metavar="FILE", help="change only these sources")
    parser.add_argument("--changes", type=int, default=120, help="how many changes are made (120)")
    parser.add_argument("--fewest", type=int, default=FEWEST, help=f"how many must alter something ({FEWEST})")
    parser.add_argument("--groups", type=int, default=GROUPS, help=f"how many groups are converted ({GROUPS})")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (1)")
    parser.add_argument("--proof", metavar="PROGRAM", help="let this program prove, and not the unchanged one")
    parser.add_argument("--list", action="store_true", help="only list the changes")
    options = parser.parse_args()
    unknown = [file for file in options.files if file not in changed_files()]
    if unknown:
        parser.error(f"not a source of reports, verdicts and results: {', '.join(unknown)}")
    sys.exit(0 if prove(options) else 1)


if __name__ == "__main__":
    main()
