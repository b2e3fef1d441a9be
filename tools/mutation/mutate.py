#!/usr/bin/env python3
"""Changes the core in small ways, one at a time, and tells which changes no test notices.

Works on copies of the tree under build/mutate, one for each job. Prints every survivor as soon as it is known; what was
learnt is kept in build/mutate/results.json, from where --resume goes on.
"""

import argparse
import hashlib
import json
import os
import queue
import random
import resource
import signal
import subprocess
import sys
import threading
import time
from collections import Counter
from pathlib import Path

sys.dont_write_bytecode = True  # nothing is left between the sources

from mutations import mutations
from reasons import REASONS, has_reason, parse

ROOT = Path(__file__).resolve().parents[2]
PLACE = ROOT / "build" / "mutate"

# The test programs that run a folder's code, the most specific first.
PROGRAMS = {
    "base": ["base", "mus", "analysis", "conversion", "shell", "faults"],
    "mus": ["mus", "pagetext", "analysis", "conversion", "sort", "shell", "properties", "faults"],
    "input": ["input", "shell", "faults"],
    "analysis": ["analysis", "shell", "conversion", "properties", "faults"],
    "conversion": ["conversion", "shell", "properties", "faults"],
    "sort": ["sort", "shell", "properties", "faults"],
    "shell": ["shell", "faults", "console"],
}

# What takes seconds under sanitizers, and so is run with --thorough only.
SLOW = ["DamagedPage.*", "DamagedGroup.*", "AnyNamesFile.AnyByte*", "FileNames.EveryShortText*",
        "Convert.TheCounterOfSystemsHas16Bits", "*HostFaults.*Panel"]

BUILD_LIMIT = 600  # seconds
MEMORY = 4 << 10  # megabytes
FILE_SIZE = 256 << 20  # bytes


def call(command, folder, limit, log=None):
    """The exit code; None when the time limit ended it, with everything it had started."""

    def confine():
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    environment = dict(os.environ, ASAN_OPTIONS=f"hard_rss_limit_mb={MEMORY}:symbolize=0", TMPDIR=str(folder))
    process = subprocess.Popen(
        command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=log or subprocess.DEVNULL,
        stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=confine)
    try:
        return process.wait(limit)
    except subprocess.TimeoutExpired:
        return None
    finally:
        if process.returncode is None:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()


class Workshop:
    """A copy of the tree, its build, and the test programs of it."""

    def __init__(self, number, thorough):
        self.thorough = thorough
        self.tree = PLACE / f"tree{number}"
        self.build = self.tree / "build" / "debug"
        self.log = PLACE / f"tree{number}.log"
        self.limits = {}

    def refresh(self):
        """Brings the copy up to date. Files that did not change keep their time, so that they are not built again."""
        listed = subprocess.run(
            ["git", "-c", f"safe.directory={ROOT}", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True,
            capture_output=True, text=True).stdout.split("\n")
        for name in filter(None, listed):
            if not (ROOT / name).is_file():
                continue
            content = (ROOT / name).read_bytes()
            if name == "src/CMakeLists.txt":
                # A changed source may be warned about.
                content = b"add_compile_options(-w)\n" + content
            copy = self.tree / name
            if not copy.is_file() or copy.read_bytes() != content:
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(content)
                copy.chmod((ROOT / name).stat().st_mode)

    def prepare(self, programs):
        """Builds the programs and sees them pass, unchanged. A run may take a multiple of the time it took then."""
        self.refresh()
        with open(self.log, "w") as log:
            targets = [f"test_{program}" for program in programs]
            # Without -g; the library's own checks see an index that leaves its array and stays in the same object.
            configure = ["cmake", "--preset", "debug", "--log-level=WARNING", "-DCMAKE_CXX_FLAGS_DEBUG=-D_GLIBCXX_ASSERTIONS"]
            if call(configure, self.tree, BUILD_LIMIT, log) != 0 or \
                    call(["ninja", f"-j{os.cpu_count()}", "-C", str(self.build), *targets], self.tree, 6 * BUILD_LIMIT, log) != 0:
                sys.exit(f"mutate: the unchanged tree does not build: {self.log}")
            for program in programs:
                started = time.monotonic()
                if call(self.command(program), self.build, BUILD_LIMIT, log) != 0:
                    sys.exit(f"mutate: {program} fails on the unchanged tree: {self.log}")
                self.limits[program] = 10 + 5 * (time.monotonic() - started)

    def command(self, program):
        tests = "*" if self.thorough else "*-" + ":".join(SLOW)
        return [str(self.build / "tests" / f"test_{program}"), "--gtest_brief=1", "--gtest_fail_fast",
                f"--gtest_filter={tests}"]

    def built(self, program):
        with open(self.log, "w") as log:
            return call(["ninja", "-j1", "-C", str(self.build), f"test_{program}"], self.tree, BUILD_LIMIT, log) == 0

    def judge(self, mutation, source, programs):
        """What becomes of the mutation: "killed by P", "does not compile" or "survived"."""
        place = self.tree / mutation.file
        place.write_text(mutation.applied(source))
        try:
            for program in programs:
                if not self.built(program):
                    return "does not compile"
                code = call(self.command(program), self.build, self.limits[program])
                if code is None:
                    return f"killed by {program} (time limit)"
                if code != 0:
                    return f"killed by {program}"
            return "survived"
        finally:
            place.write_text(source)


def core_files():
    return [str(path.relative_to(ROOT)) for folder in PROGRAMS for path in sorted((ROOT / "src" / folder).glob("*"))
            if path.suffix in (".cpp", ".h")]


def folder_of(file):
    return Path(file).parts[1]


def key_of(mutation, source):
    """Names the mutation as long as its file stays as it is."""
    digest = hashlib.sha256(source.encode()).hexdigest()[:16]
    return f"{mutation.file} {digest} {mutation.start} {mutation.end} {mutation.new}"


class Run:
    """One run: the mutations still to be judged, and what is known of the others."""

    def __init__(self, chosen, sources, known):
        self.sources = sources
        self.results = dict(known)
        self.lock = threading.Lock()
        self.counts = Counter()
        self.survivors = []
        self.left = queue.Queue()
        # File by file, as a changed file is compiled again when it is left.
        files = {}
        for mutation in chosen:
            files.setdefault(mutation.file, []).append(mutation)
        for group in files.values():
            self.left.put(group)
        self.all = len(chosen)
        self.done = 0
        self.started = 0.0

    def note(self, mutation, outcome):
        with self.lock:
            self.done += 1
            self.counts[outcome.split(" by ")[0]] += 1
            self.results[key_of(mutation, self.sources[mutation.file])] = outcome
            if outcome == "survived":
                self.survivors.append(mutation)
                print(f"survived: {mutation}", flush=True)
            if self.done % 20 == 0:
                each = (time.monotonic() - self.started) / self.done
                print(f"  {self.done}/{self.all}, {each:.1f} s each, {dict(self.counts)}", flush=True)
            keep(self.results)

    def work(self, workshop):
        while True:
            try:
                group = self.left.get_nowait()
            except queue.Empty:
                return
            for mutation in group:
                programs = PROGRAMS[folder_of(mutation.file)]
                self.note(mutation, workshop.judge(mutation, self.sources[mutation.file], programs))

    def start(self, jobs, thorough):
        needed = [program for folder in PROGRAMS for program in PROGRAMS[folder]
                  if any(folder_of(group[0].file) == folder for group in self.left.queue)]
        workshops = [Workshop(number, thorough) for number in range(1, jobs + 1)]
        for workshop in workshops:
            workshop.prepare(list(dict.fromkeys(needed)))
        self.started = time.monotonic()
        threads = [threading.Thread(target=self.work, args=(workshop,), daemon=True) for workshop in workshops]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    def summary(self):
        judged = self.counts["killed"] + self.counts["survived"]
        each = (time.monotonic() - self.started) / max(self.done, 1)
        share = 100 * self.counts["killed"] / max(judged, 1)
        return (f"{self.done} mutations: {self.counts['killed']} killed, {self.counts['survived']} survived, "
                f"{self.counts['does not compile']} do not compile; {share:.1f} % of those that compile were killed; "
                f"{each:.1f} s each")


def keep(results):
    PLACE.mkdir(parents=True, exist_ok=True)
    fresh = PLACE / "results.new"
    fresh.write_text(json.dumps(results, indent=0))
    fresh.replace(PLACE / "results.json")


def known_results():
    try:
        return json.loads((PLACE / "results.json").read_text())
    except FileNotFoundError:
        return {}


def chosen_mutations(options, sources, known):
    reasons = [] if options.all else parse(REASONS.read_text())
    everything = [mutation for file in sources for mutation in mutations(file, sources[file])
                  if not has_reason(mutation, sources[file], reasons)]
    if options.survivors:
        everything = [m for m in everything if known.get(key_of(m, sources[m.file])) == "survived"]
    if options.sample and options.sample < len(everything):
        everything = random.Random(options.seed).sample(everything, options.sample)
        everything.sort(key=lambda m: (list(sources).index(m.file), m.start, m.new))
    if options.resume:
        everything = [m for m in everything if key_of(m, sources[m.file]) not in known]
    return everything


def main():
    parser = argparse.ArgumentParser(prog="./dev mutate", description=__doc__)
    parser.add_argument("files", nargs="*", metavar="FILE", help="only these sources, as src/mus/exch.cpp")
    parser.add_argument("--sample", type=int, metavar="N", help="so many mutations, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (1)")
    parser.add_argument("--jobs", type=int, default=1, help="copies of the tree to work in (1)")
    parser.add_argument("--resume", action="store_true", help="leave out what an earlier run has judged")
    parser.add_argument("--survivors", action="store_true", help="only what survived in earlier runs")
    parser.add_argument("--all", action="store_true", help="also those that reasons.txt lists, as no test can notice them")
    parser.add_argument("--thorough", action="store_true", help="run the slow tests as well")
    parser.add_argument("--list", action="store_true", help="only list the mutations")
    options = parser.parse_args()

    unknown = [file for file in options.files if file not in core_files()]
    if unknown:
        parser.error(f"no source of the core: {', '.join(unknown)}")
    sources = {file: (ROOT / file).read_text() for file in options.files or core_files()}
    known = known_results()
    chosen = chosen_mutations(options, sources, known)
    if options.list:
        print(*chosen, sep="\n")
        return
    run = Run(chosen, sources, known)
    if chosen:
        run.start(options.jobs, options.thorough)
    for mutation in run.survivors:
        print(mutation)
    print(run.summary())


if __name__ == "__main__":
    main()
