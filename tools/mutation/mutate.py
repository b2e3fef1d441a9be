#!/usr/bin/env python3
"""Changes the core in small ways, one at a time, and reports the changes that no test notices.

Works on copies of the tree under build/mutate, one for each job. Prints every survivor as soon as it is known. The
results are kept in build/mutate/results.json, where --resume continues.
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

sys.dont_write_bytecode = True  # leave nothing between the sources

from mutations import mutations
from reasons import all_reasons, has_reason

ROOT = Path(__file__).resolve().parents[2]
FOLDER = ROOT / "build" / "mutate"

# The core: the folders of src/ except platform. For each of them the test programs that run its code, the most specific
# first.
PROGRAMS = {
    "base": ["base", "mus", "analysis", "conversion", "shell", "verify", "faults"],
    "messages": ["messages", "platform", "input", "analysis", "conversion", "shell", "diagnostics", "console"],
    "mus": ["mus", "pagetext", "analysis", "conversion", "sort", "shell", "properties", "faults"],
    "pagetext": ["pagetext", "mus", "console"],
    "repair": ["repair", "console"],
    "input": ["input", "shell", "faults"],
    "sort": ["sort", "shell", "properties", "faults"],
    "analysis": ["analysis", "shell", "conversion", "diagnostics", "properties", "faults"],
    "conversion": ["conversion", "shell", "properties", "faults"],
    "fit": ["music", "fit_properties", "console"],
    "music": ["music", "fit_properties", "console"],
    "report_page": ["report_page", "console"],
    "shell": ["shell", "faults", "console"],
    "diagnostics": ["diagnostics", "console"],
    "drawing": ["drawing", "console"],
    "verify": ["verify", "verify_properties", "console"],
    "survey": ["survey", "console"],
}

# Tests that need seconds under sanitizers, and so are run with --thorough only.
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


class WorkingCopy:
    """A copy of the tree, with its build and its test programs."""

    def __init__(self, number, thorough):
        self.thorough = thorough
        self.tree = FOLDER / f"tree{number}"
        self.build = self.tree / "build" / "debug"
        self.log = FOLDER / f"tree{number}.log"
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
                # Changed sources may cause warnings.
                content = b"add_compile_options(-w)\n" + content
            copy = self.tree / name
            if not copy.is_file() or copy.read_bytes() != content:
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(content)
                copy.chmod((ROOT / name).stat().st_mode)

    def prepare(self, programs):
        """Builds the programs and checks that they pass, unchanged. Their time limits are a multiple of the time of this run."""
        self.refresh()
        with open(self.log, "w") as log:
            targets = [f"test_{program}" for program in programs]
            # Without -g; the library's own checks see an index that leaves its array and stays in the same object.
            configure = ["cmake", "--preset", "debug", "--log-level=WARNING", "-DKIV_JOINED=OFF",
                         "-DCMAKE_CXX_FLAGS_DEBUG=-D_GLIBCXX_ASSERTIONS"]
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

    def outcome_of(self, mutation, source, programs):
        """The outcome of the mutation: "killed by P", "does not compile" or "survived"."""
        path = self.tree / mutation.file
        path.write_text(mutation.applied(source))
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
            path.write_text(source)


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
    """One run: the mutations that are left, and the results of the others."""

    def __init__(self, chosen, sources, known):
        self.sources = sources
        self.results = dict(known)
        self.lock = threading.Lock()
        self.counts = Counter()
        self.survivors = []
        self.left = queue.Queue()
        # File by file, because leaving a file compiles it once more.
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

    def work(self, copy):
        while True:
            try:
                group = self.left.get_nowait()
            except queue.Empty:
                return
            for mutation in group:
                programs = PROGRAMS[folder_of(mutation.file)]
                self.note(mutation, copy.outcome_of(mutation, self.sources[mutation.file], programs))

    def start(self, jobs, thorough):
        needed = [program for folder in PROGRAMS for program in PROGRAMS[folder]
                  if any(folder_of(group[0].file) == folder for group in self.left.queue)]
        copies = [WorkingCopy(number, thorough) for number in range(1, jobs + 1)]
        for copy in copies:
            copy.prepare(list(dict.fromkeys(needed)))
        self.started = time.monotonic()
        threads = [threading.Thread(target=self.work, args=(copy,), daemon=True) for copy in copies]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    def summary(self):
        tried = self.counts["killed"] + self.counts["survived"]
        each = (time.monotonic() - self.started) / max(self.done, 1)
        share = 100 * self.counts["killed"] / max(tried, 1)
        return (f"{self.done} mutations: {self.counts['killed']} killed, {self.counts['survived']} survived, "
                f"{self.counts['does not compile']} do not compile; {share:.1f} % of those that compile were killed; "
                f"{each:.1f} s each")


def keep(results):
    FOLDER.mkdir(parents=True, exist_ok=True)
    fresh = FOLDER / "results.new"
    fresh.write_text(json.dumps(results, indent=0))
    fresh.replace(FOLDER / "results.json")


def known_results():
    try:
        return json.loads((FOLDER / "results.json").read_text())
    except FileNotFoundError:
        return {}


def chosen_mutations(options, sources, known):
    reasons = [] if options.all else all_reasons()
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
    parser.add_argument("--sample", type=int, metavar="N", help="N mutations, chosen at random")
    parser.add_argument("--seed", type=int, default=1, help="of the choice (1)")
    parser.add_argument("--jobs", type=int, default=1, help="copies of the tree to work in (1)")
    parser.add_argument("--resume", action="store_true", help="continue an earlier run: leave out what it has tried")
    parser.add_argument("--survivors", action="store_true", help="only what survived in earlier runs")
    parser.add_argument("--all", action="store_true", help="also those that reasons/ lists, as no test can notice them")
    parser.add_argument("--thorough", action="store_true", help="run the slow tests as well")
    parser.add_argument("--list", action="store_true", help="only list the mutations")
    options = parser.parse_args()

    unknown = [file for file in options.files if file not in core_files()]
    if unknown:
        parser.error(f"not a source of the core: {', '.join(unknown)}")
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
