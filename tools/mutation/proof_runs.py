"""Runs of the console program over groups of pages: a conversion by one program, and its proof by another."""

import re
import resource
import shutil
import subprocess
from dataclasses import dataclass, field

LIMIT = 5  # seconds, of one command; one that ends takes some hundredths
MEMORY = 1 << 30  # bytes
FILE_SIZE = 64 << 20  # bytes
FIRST_RESULT = "results/WORK0001.MUS"
REPORT = "KivSystem2.TXT"
TIME = re.compile(rb"   \d\d-\d\d-\d{4}   \d\d:\d\d:\d\d\r\n")


@dataclass
class Written:
    """What a conversion has left: its exit status, None at a time limit, and its files by name."""

    status: int | None
    files: dict = field(default_factory=dict)


def run(command, folder):
    """The exit status and the standard output of a command; the status is None when a limit ended it."""

    def confine():
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    try:
        ended = subprocess.run([str(word) for word in command], cwd=folder, stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=LIMIT, preexec_fn=confine,
                               check=False)
    except subprocess.TimeoutExpired:
        return None, ""
    return ended.returncode, ended.stdout.decode(errors="replace")


class Group:
    """The pages of a group, and a folder to convert them in."""

    def __init__(self, source, folder):
        self.name = source.name
        self.folder = folder / source.name
        self.pages = sorted(page.name for page in source.iterdir())
        self.folder.mkdir(parents=True, exist_ok=True)
        for page in self.pages:
            shutil.copyfile(source / page, self.folder / page)

    def convert(self, program):
        """Converts the pages where nothing of an earlier conversion is left."""
        for place in self.folder.iterdir():
            if place.is_dir():
                shutil.rmtree(place)
            elif place.name not in self.pages:
                place.unlink()
        (self.folder / "results").mkdir()
        status, _ = run([program, "convert", *self.pages, "--result", FIRST_RESULT, "--force"], self.folder)
        return Written(status, self.files())

    def files(self):
        """All files but the pages. The report has no time."""
        found = {str(place.relative_to(self.folder)): place.read_bytes() for place in self.folder.rglob("*")
                 if place.is_file() and (place.parent != self.folder or place.name not in self.pages)}
        if REPORT in found:
            found[REPORT] = TIME.sub(b"   (time)\r\n", found[REPORT], count=1)
        return found

    def proof(self, program):
        """Whether the proof says YES, and its first finding."""
        status, out = run([program, "verify", *self.pages, "--result", FIRST_RESULT], self.folder)
        lines = out.split("\n")
        findings = [line for line in lines[1:] if ": " in line and not re.match(r"[A-Z][a-z ]+: \d+$", line)]
        if lines[0] not in ("PROVED=YES", "PROVED=NO") or (status == 0) != (lines[0] == "PROVED=YES"):
            raise RuntimeError(f"the proof of group {self.name} gives no answer: exit status {status}")
        return status == 0, findings[0] if findings else ""


@dataclass
class Outcome:
    """What a change of the program does to the groups."""

    altered: list = field(default_factory=list)  # the names of groups whose files are not the same
    missed: list = field(default_factory=list)  # of these, the ones that the proof finds right
    finding: str = ""  # one of the proof's
    is_endless: bool = False  # the changed program does not end on the last group


def outcome_of(groups, right, changed, proving):
    """Converts the groups with the changed program. The files that differ from the right ones must not be proved. When
    the program does not end on a group, the groups after it are left out."""
    outcome = Outcome()
    for group in groups:
        if outcome.is_endless:
            break
        written = group.convert(changed)
        outcome.is_endless = written.status is None
        if written.files == right[group.name]:
            continue
        outcome.altered.append(group.name)
        is_proved, finding = group.proof(proving)
        if is_proved:
            outcome.missed.append(group.name)
        outcome.finding = outcome.finding or finding
    return outcome


def right_files(groups, program):
    """The files that the unchanged program leaves for each group. Each of them must be proved."""
    right = {}
    for group in groups:
        written = group.convert(program)
        is_proved, finding = group.proof(program)
        if written.status != 0 or not is_proved:
            raise RuntimeError(f"group {group.name} is not proved when nothing is changed: {finding}")
        right[group.name] = written.files
    return right
