#!/usr/bin/env python3
"""Tests of the mutation script: which changes it finds, and whether it distinguishes changes that a test notices from
those that none does."""

import re
import subprocess
import sys
import tempfile
import unittest
import unittest.mock
from pathlib import Path

sys.dont_write_bytecode = True  # leave nothing between the sources

import mutate
import proof_runs
import prove_proof
from mutations import mutations
from reasons import FOLDER, all_reasons, has_reason, parse


def changes(source):
    return [(mutation.old, mutation.new) for mutation in mutations("src/mus/x.cpp", source)]


class Mutations(unittest.TestCase):
    def test_swap_operators_between_blanks(self):
        self.assertEqual(changes("x = a < b;")[1:], [("<", "<=")])
        self.assertEqual(changes("return a && b == c + d;"), [("&&", "||"), ("==", "!="), ("+", "-")])

    def test_leave_comments_texts_and_includes_alone(self):
        self.assertEqual(changes('#include <a>\n// a < 1\n/* 2 */ return f("3 < 4", \'5\', R"(6)");'), [])

    def test_leave_template_arguments_and_references_alone(self):
        self.assertEqual(changes("std::vector<int> f(A&& a, B* b);"), [])

    def test_move_numbers_by_one_both_ways_and_not_below_0(self):
        self.assertEqual(changes("return 0x10U;"), [("0x10U", "15U"), ("0x10U", "17U")])
        self.assertEqual(changes("return 0;"), [("0", "1")])
        self.assertEqual(changes("return 2.5F;"), [("2.5F", "1.5F"), ("2.5F", "3.5F")])

    def test_negate_conditions_after_what_they_declare(self):
        self.assertIn(("a.empty()", "!(a.empty())"), changes("if (a.empty()) {}"))
        self.assertIn(("x", "!(x)"), changes("if (auto x = f(); x) {}"))

    def test_drop_statements_and_no_declarations(self):
        self.assertEqual(changes("void f() { g(); int x = h(); return; }"), [("g();", ";"), ("return;", ";")])

    def test_keep_loops_their_ends(self):
        self.assertNotIn(("f(i);", ";"), changes("for (; f(i);) {}"))

    def test_say_where_they_are(self):
        self.assertEqual(str(mutations("src/mus/x.cpp", "\n\nreturn a < b;")[0]), "src/mus/x.cpp:3: < -> <=")


class Programs(unittest.TestCase):
    def test_are_known_for_every_folder_of_the_core(self):
        folders = {path.parent.name for path in (mutate.ROOT / "src").glob("*/CMakeLists.txt")}
        self.assertEqual(set(mutate.PROGRAMS), folders - {"platform"})

    def test_are_built(self):
        tests = mutate.ROOT / "tests"
        lists = "".join(path.read_text() for path in [tests / "CMakeLists.txt", *tests.glob("*/*.cmake")])
        for program in sum(mutate.PROGRAMS.values(), []):
            self.assertRegex(lists, rf"kiv_(core|bare|)_?test(_program)?\({program}\b")


class Reasons(unittest.TestCase):
    ENTRY = "# why\n\nsrc/mus/*.cpp\nreturn * < *;\n< -> <=\nA reason\nof two lines.\n"

    def reasoned(self, source, file="src/mus/x.cpp"):
        return [mutation.change() for mutation in mutations(file, source) if has_reason(mutation, source, parse(self.ENTRY))]

    def test_are_found_by_source_line_and_change(self):
        self.assertEqual(self.reasoned("x = 1;\n  return a < b;\n"), ["< -> <="])
        self.assertEqual(self.reasoned("return a < b;", "src/sort/x.cpp"), [])
        self.assertEqual(self.reasoned("x = a < b;"), [])
        self.assertEqual(self.reasoned("return a < b; x"), [])

    def test_are_given_for_changes_that_there_are(self):
        sources = {file: (mutate.ROOT / file).read_text() for file in mutate.core_files()}
        everything = [mutation for file in sources for mutation in mutations(file, sources[file])]
        for entry in all_reasons():
            with self.subTest(entry=[part.pattern for part in entry]):
                self.assertTrue(any(has_reason(mutation, sources[mutation.file], [entry]) for mutation in everything))

    def test_are_in_the_file_of_their_folder(self):
        folders = {path.parent.name for path in (mutate.ROOT / "src").glob("*/CMakeLists.txt")}
        for file in FOLDER.glob("*.txt"):
            with self.subTest(file=file.name):
                self.assertIn(file.stem, folders | {"all"})
                start = "src/" if file.stem == "all" else f"src/{file.stem}/"
                for sources, *_ in parse(file.read_text()):
                    self.assertTrue(sources.pattern.startswith(re.escape(start)), sources.pattern)

    def test_of_all_files_are_read(self):
        entries = sum(len(parse(file.read_text())) for file in FOLDER.iterdir() if file.suffix == ".txt")
        self.assertGreater(entries, len(parse((FOLDER / "mus.txt").read_text())))
        self.assertEqual(len(all_reasons()), entries)

    def test_have_all_their_lines(self):
        self.assertRaises(ValueError, parse, "src/*\n1 -> 0\nBecause.\n")


class TinyCopy(mutate.WorkingCopy):
    """One source, and one test that never uses 3."""

    TEST = '#include "value.cpp"\nint main() { return isSmall(1) && !isSmall(9) ? 0 : 1; }\n'

    def __init__(self, tree):
        self.tree = tree
        self.limits = {"tiny": 10}
        (tree / "test.cpp").write_text(self.TEST)

    def built(self, program):
        return subprocess.run(["g++", "test.cpp", "-o", "test"], cwd=self.tree, stderr=subprocess.DEVNULL).returncode == 0

    def command(self, program):
        return [str(self.tree / "test")]

    @property
    def build(self):
        return self.tree


class Outcomes(unittest.TestCase):
    SOURCE = "bool isSmall(int number) { return number < 3; }\n"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.copy = TinyCopy(Path(folder.name))

    def outcome_of(self, old, new):
        start = self.SOURCE.index(old)
        mutation = mutate.mutations("value.cpp", self.SOURCE)[0]
        mutation = type(mutation)("value.cpp", start, start + len(old), 1, old, new)
        return self.copy.outcome_of(mutation, self.SOURCE, ["tiny"])

    def test_distinguish_survivors_from_killed_mutations(self):
        self.assertEqual(self.outcome_of(" < ", " <= "), "survived")
        self.assertEqual(self.outcome_of(" < ", " > "), "killed by tiny")
        self.assertEqual(self.outcome_of(" < ", " << nothing < "), "does not compile")
        self.assertEqual((self.copy.tree / "value.cpp").read_text(), self.SOURCE)

    def test_stop_programs_that_do_not_end(self):
        self.copy.limits["tiny"] = 0.3
        self.assertEqual(self.outcome_of("return", "while (true) {} return"), "killed by tiny (time limit)")


class ProofOfTheProof(unittest.TestCase):
    """Programs of a few lines stand for the console program: they "convert" pages by copying them."""

    CONVERT = 'if [ "$1" = convert ]; then cat "$2" > results/WORK0001.MUS; echo report > KivSystem2.TXT; {}; exit 0; fi\n'
    NO = "echo PROVED=NO; echo 'Inputs: 1'; echo 'WORK0001.MUS, item 1: differs'; exit 1\n"
    YES = "echo PROVED=YES; exit 0\n"
    TRUE_PROOF = 'if cmp -s "$2" results/WORK0001.MUS && [ -s KivSystem2.TXT ]; then ' + YES + "fi\n" + NO

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name in ("001", "002"):
            (self.folder / "groups" / name).mkdir(parents=True)
            (self.folder / "groups" / name / "PAGE1.MUS").write_text("page of " + name)
        self.groups = [proof_runs.Group(source, self.folder / "runs")
                       for source in sorted((self.folder / "groups").iterdir())]
        self.unchanged = self.program("unchanged", "", self.TRUE_PROOF)
        self.right = proof_runs.right_files(self.groups, self.unchanged)

    def program(self, name, change, proof):
        path = self.folder / name
        path.write_text("#!/bin/sh\n" + self.CONVERT.format(change or "true") + proof)
        path.chmod(0o755)
        return path

    def outcome_of(self, change, proving=None):
        return proof_runs.outcome_of(self.groups, self.right, self.program("changed", change, ""),
                                     proving or self.unchanged)

    def test_finds_nothing_altered_by_the_unchanged_program(self):
        self.assertEqual(self.outcome_of(""), proof_runs.Outcome())

    def test_notices_what_a_change_alters(self):
        for change in ("echo more >> results/WORK0001.MUS", "rm results/WORK0001.MUS", ": > KivSystem2.TXT"):
            outcome = self.outcome_of(change)
            self.assertEqual((outcome.altered, outcome.missed), (["001", "002"], []), change)
            self.assertEqual(outcome.finding, "WORK0001.MUS, item 1: differs")

    def test_stops_at_a_group_on_which_the_program_does_not_end(self):
        with unittest.mock.patch.object(proof_runs, "LIMIT", 0.3):
            outcome = self.outcome_of("sleep 3")
        self.assertEqual((outcome.is_endless, outcome.altered, outcome.missed), (True, [], []))
        with unittest.mock.patch.object(proof_runs, "LIMIT", 0.3):
            outcome = self.outcome_of(": > KivSystem2.TXT; sleep 3")
        self.assertEqual((outcome.altered, outcome.missed), (["001"], []))

    def test_asks_only_about_groups_that_are_altered(self):
        outcome = self.outcome_of('case $(pwd) in *002) echo more >> results/WORK0001.MUS ;; esac')
        self.assertEqual(outcome.altered, ["002"])

    def test_notices_a_proof_that_always_says_yes(self):
        blind = self.program("blind", "", self.YES)
        outcome = self.outcome_of("echo more >> results/WORK0001.MUS", blind)
        self.assertEqual(outcome.missed, ["001", "002"])
        table = prove_proof.Table()
        table.line = lambda change, text: None
        table.add(None, outcome)
        self.assertFalse(table.is_proved(1))

    def test_notices_a_file_that_the_proof_does_not_look_at(self):
        outcome = self.outcome_of("echo more > results/WORK0002.MUS")
        self.assertEqual(outcome.missed, ["001", "002"])

    def test_fails_when_too_few_changes_alter_anything(self):
        table = prove_proof.Table()
        table.line = lambda change, text: None
        table.add(None, proof_runs.Outcome(["001"], [], "differs"))
        self.assertTrue(table.is_proved(1))
        self.assertFalse(table.is_proved(2))

    def test_needs_groups_that_are_proved_and_answers(self):
        with self.assertRaises(RuntimeError):
            proof_runs.right_files(self.groups, self.program("doubtful", "", self.NO))
        with self.assertRaises(RuntimeError):
            self.groups[0].proof(self.program("silent", "", "exit 1\n"))

    def test_chooses_at_least_60_changes_spread_over_all_sources(self):
        sources = {file: (mutate.ROOT / file).read_text() for file in prove_proof.changed_files()}
        changes = prove_proof.chosen_changes(sources, prove_proof.FEWEST, 1)
        self.assertEqual(changes, prove_proof.chosen_changes(sources, prove_proof.FEWEST, 1))
        self.assertGreaterEqual(len(changes), 60)
        self.assertEqual({change.file for change in changes}, set(sources))


if __name__ == "__main__":
    unittest.main(verbosity=0)
