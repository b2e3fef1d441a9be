"use strict";

const SYSTEMS_AT_ONCE = 40;
const MOST_PRINTED = 20;

/** Sheets that are compared show the same part. */
function scrollTogether(sheets) {
  for (const sheet of sheets) {
    sheet.addEventListener("scroll", () => {
      for (const other of sheets) {
        if (Math.abs(other.scrollLeft - sheet.scrollLeft) > 1) {
          other.scrollLeft = sheet.scrollLeft;
        }
      }
    }, { passive: true });
  }
}

/** Scrolls sheets to their first mark, where it is out of sight. */
function scrollToMarks(sheets) {
  for (const sheet of sheets) {
    const { mark, end } = sheet.dataset;
    if (mark !== undefined && Number(end) > sheet.clientWidth) {
      sheet.scrollLeft = Number(mark) - sheet.clientWidth / 4;
    }
  }
}

/** From where to where the first mark of a picture lies, in pixels; null without one. */
function firstMark(picture) {
  const scale = 0.75;
  const marks = [...picture[4], ...picture[5]].filter(([, x]) => x >= 0).sort((a, b) => a[1] - b[1]);
  return marks.length > 0 ? { from: scale * marks[0][1], to: scale * (marks[0][3] ?? marks[0][1] + 20) } : null;
}

/** The systems with pictures, a few at a time. A picture is drawn when its system is opened. */
class SystemList {
  constructor(host, report, chart) {
    this.report = report;
    this.chart = chart;
    this.pictures = new Map(report.pictures.systems.map((entry) => [entry[0], entry]));
    this.proposalsOf = new Map();
    report.proposals.forEach(([system], proposal) => {
      this.proposalsOf.set(system, [...(this.proposalsOf.get(system) ?? []), proposal]);
    });
    this.first = 0;
    this.build(host);
    this.choose("all");
  }

  build(host) {
    const options = [
      ["all", "All with a picture"],
      ["problems", "With problems or warnings"],
      ["proposals", "With proposals"],
    ].map(([value, words]) => make("option", { value }, words));
    this.select = make("select", { id: "system-filter" }, ...options);
    this.range = make("span", { role: "status", id: "system-range" });
    this.back = make("button", { type: "button", id: "systems-back" }, "Previous");
    this.forward = make("button", { type: "button", id: "systems-forward" }, "Next");
    this.openAll = make("button", { type: "button", id: "systems-open" }, "Open all shown");
    this.list = make("div", { id: "systems-shown" });
    this.note = make("p", { class: "note", role: "status", id: "system-note", tabindex: "-1" });
    const leftOut = make("p", { class: "note", id: "systems-left-out" }, this.leftOutWords());
    this.printNote = make("p", { class: "note print-only" });
    host.append(
      make("p", { class: "actions" }, make("label", {}, "Show ", this.select), this.back, this.forward, this.openAll, this.range),
      leftOut,
      this.note,
      this.list,
      this.printNote,
    );
    this.select.addEventListener("change", () => this.choose(this.select.value));
    this.openAll.addEventListener("click", () => {
      for (const entry of this.list.children) {
        entry.open = true;
      }
    });
    this.back.addEventListener("click", () => this.show(this.first - SYSTEMS_AT_ONCE));
    this.forward.addEventListener("click", () => this.show(this.first + SYSTEMS_AT_ONCE));
  }

  leftOutWords() {
    const { leftOut } = this.report.pictures;
    const common = this.chart.count - this.pictures.size - leftOut;
    const words = [];
    if (leftOut > 0) {
      words.push(`The pictures of ${counted(leftOut, "system", "systems")} are left out to keep the file small.`);
    }
    if (common > 0) {
      words.push(`${counted(common, "system is", "systems are")} like the first one of layout A and not shown.`);
    }
    return words.length > 0 ? `${words.join(" ")} The option --all of kivsys report shows all.` : "";
  }

  choose(kind) {
    this.note.textContent = "";
    this.select.value = kind;
    const isWanted = {
      all: () => true,
      problems: (system) => this.chart.problemsOf.has(system),
      proposals: (system) => this.proposalsOf.has(system),
    }[kind];
    this.systems = [...this.pictures.keys()].filter(isWanted);
    this.show(0);
  }

  show(first) {
    this.first = Math.min(Math.max(first, 0), Math.max(this.systems.length - 1, 0));
    const shown = this.systems.slice(this.first, this.first + SYSTEMS_AT_ONCE);
    this.list.replaceChildren(...shown.map((system) => this.entry(system)));
    this.back.disabled = this.first === 0;
    this.forward.disabled = this.first + SYSTEMS_AT_ONCE >= this.systems.length;
    const end = this.first + shown.length;
    this.range.textContent = shown.length === 0 ? "no systems" : `${this.first + 1} to ${end} of ${this.systems.length}`;
  }

  heading(system) {
    const { chart } = this;
    const layout = chart.labels[chart.layoutOf[system - 1]] ?? { label: "A", edits: [] };
    const page = chart.pages[chart.pageOf[system - 1]]?.name ?? "";
    const differs = chart.layoutOf[system - 1] !== 0;
    const parts = [page, differs ? `layout ${layout.label}: as A, but ${chart.layoutWords(layout)}` : "layout A"];
    return [...parts, ...chart.kindsOf(system)].join(", ");
  }

  entry(system) {
    const summary = make("summary", {}, make("h3", {}, `System ${system}`), " ", make("span", { class: "amount" }, this.heading(system)));
    const entry = make("details", { class: "system", id: `system-${system}` }, summary);
    entry.addEventListener("toggle", () => entry.open && this.fill(entry, system));
    return entry;
  }

  fill(entry, system) {
    if (entry.childElementCount === 1) {
      entry.append(...this.content(system));
      // A closed entry has no widths.
      requestAnimationFrame(() => scrollToMarks(entry.querySelectorAll(".sheet")));
    }
  }

  content(system) {
    const [, before, after] = this.pictures.get(system);
    const figures = [this.figure(before, after ? "Before" : "", system)];
    if (after) {
      figures.push(this.figure(after, "After", system));
    } else if (this.report.results) {
      figures.push(make("p", { class: "note" }, "There is no result page for this system."));
    }
    scrollTogether(figures.flatMap((figure) => [...figure.querySelectorAll(".sheet")]));
    const content = [make("div", { class: after ? "pictures compared" : "pictures" }, ...figures)];
    const problems = this.chart.problemsOf.get(system) ?? [];
    if (problems.length > 0) {
      const links = problems.map((problem) =>
        make("li", {}, make("a", { href: `#problem-${problem}` }, this.report.problems[problem][0])));
      content.push(make("ul", {}, ...links));
    }
    const proposals = this.proposalsOf.get(system) ?? [];
    if (proposals.length > 0) {
      content.push(proposalBoxes(proposals, this.report));
    }
    return content;
  }

  figure(picture, words, system) {
    const staves = picture[3].length;
    const label = `${words || "Picture"} of system ${system}, ${counted(staves, "staff", "staves")}`;
    const svg = drawPicture(picture, this.report, label);
    const sheet = make("div", { class: "sheet", tabindex: "0", role: "region", "aria-label": `${label}, can be scrolled` }, svg);
    const mark = firstMark(picture);
    if (mark) {
      Object.assign(sheet.dataset, { mark: mark.from, end: mark.to });
    }
    const inserted = picture[3].filter((staff) => staff[7] === 1).length;
    const more = inserted > 0 ? `, ${counted(inserted, "rest staff", "rest staves")} inserted (tinted)` : "";
    return make("figure", {}, words ? make("figcaption", {}, `${words}${more}`) : "", sheet);
  }

  missingWords(system) {
    const { chart } = this;
    if (system < 1 || system > chart.count) {
      return `There is no system ${system}: the pages have ${counted(chart.count, "system", "systems")}.`;
    }
    const isCommon = chart.layoutOf[system - 1] === 0 && !chart.problemsOf.has(system);
    const reason = isCommon ? "it is like the first one of layout A" : "it was left out to keep the file small";
    return `System ${system} has no picture here: ${reason}. The option --all of kivsys report shows pictures of all.`;
  }

  /** The systems with pictures that need attention, from all parts of the list, the most important first. */
  systemsToPrint() {
    const { chart } = this;
    const all = [...this.pictures.keys()];
    return [...new Set([
      ...all.filter((system) => chart.faulty.has(system) || this.proposalsOf.has(system)),
      ...all.filter((system) => chart.differs(system - 1)),
      ...all.filter((system) => chart.problemsOf.has(system)),
    ])];
  }

  /** Lists and opens systems that need attention beside those that are open, for printing. Returns what undoes that. */
  openForPrinting() {
    const listed = [...this.list.children];
    const numberOf = (entry) => Number(entry.id.replace("system-", ""));
    const wanted = this.systemsToPrint();
    const wereOpen = listed.filter((entry) => entry.open);
    const numbers = new Set([...wereOpen.map(numberOf), ...wanted.slice(0, MOST_PRINTED)]);
    const entries = [...numbers].sort((a, b) => a - b).map((system) => byId(`system-${system}`) ?? this.entry(system));
    this.list.replaceChildren(...entries);
    for (const entry of entries) {
      this.fill(entry, numberOf(entry));
      entry.open = true;
    }
    const left = wanted.filter((system) => !numbers.has(system)).length;
    this.printNote.textContent =
      left > 0 ? `Not printed: ${counted(left, "picture", "pictures")} of systems that differ, or have problems or warnings. Open them in the browser to print them.` : "";
    return () => {
      for (const entry of entries) {
        entry.open = wereOpen.includes(entry);
      }
      this.list.replaceChildren(...listed);
    };
  }

  /** Opens a system, turns to the page that it is on, and moves the focus there. */
  open(system) {
    if (!this.pictures.has(system)) {
      this.note.textContent = this.missingWords(system);
      this.note.scrollIntoView({ block: "center" });
      this.note.focus({ preventScroll: true });
      return;
    }
    this.note.textContent = "";
    if (!this.systems.includes(system)) {
      this.choose("all");
    }
    const index = this.systems.indexOf(system);
    const first = index - (index % SYSTEMS_AT_ONCE);
    if (!byId(`system-${system}`)) {
      this.show(first);
    }
    const entry = byId(`system-${system}`);
    this.fill(entry, system);
    entry.open = true;
    entry.scrollIntoView({ block: "start" });
    entry.querySelector("summary").focus({ preventScroll: true });
  }
}
