"use strict";

const SMALLEST_CELL = 16;
const LARGEST_CELL = 28;
const EDIT_WORDS = ["without ", "with ", "more than once: ", "in another place: "];
const MAP_HINT = "Point at a cell, or move there with the arrow keys, to read here what it is.";

/** The chart of a group as data that the map and others use. */
class Chart {
  constructor(data, problems) {
    this.count = data.count;
    this.instruments = data.instruments.map(([id, name, runs]) => ({ id, name, cells: expandRuns(runs) }));
    this.namesById = new Map(this.instruments.map(({ id, name }) => [id, name]));
    this.pages = data.pages.map(([name, first]) => ({ name, first }));
    this.labels = data.layouts.labels.map(([label, edits]) => ({ label, edits }));
    this.layoutOf = expandRuns(data.layouts.systems);
    this.pageOf = [];
    this.pages.forEach((page, index) => {
      const end = index + 1 < this.pages.length ? this.pages[index + 1].first : this.count;
      for (let system = page.first; system < end; ++system) {
        this.pageOf.push(index);
      }
    });
    this.problemsOf = new Map();
    this.faulty = new Set();
    this.isWarning = problems.map(([, isWarning]) => isWarning === 1);
    problems.forEach(([, , systems], problem) => {
      for (const system of systems) {
        this.problemsOf.set(system, [...(this.problemsOf.get(system) ?? []), problem]);
        if (!this.isWarning[problem]) {
          this.faulty.add(system);
        }
      }
    });
  }

  /** Systems are known by their index, from 0; their numbers begin with 1. Warnings may be about every system. */
  differs(index) {
    return this.layoutOf[index] !== 0 || this.faulty.has(index + 1);
  }

  /** How a layout differs from A: "without 104 Oboe; with 113 Harp". */
  layoutWords({ edits }) {
    const most = 60;
    const listed = (ids) => {
      const names = ids.slice(0, most).map((id) => [id, this.namesById.get(id)].filter((part) => part).join(" "));
      return names.join(", ") + (ids.length > most ? ` and ${ids.length - most} more` : "");
    };
    return edits.map((ids, kind) => (ids.length > 0 ? EDIT_WORDS[kind] + listed(ids) : "")).filter((words) => words).join("; ");
  }

  /** "2 kinds of problems" and "1 kind of warning" of a system, known by its number. */
  kindsOf(system) {
    const all = this.problemsOf.get(system) ?? [];
    const warnings = all.filter((problem) => this.isWarning[problem]).length;
    const problems = all.length - warnings;
    return [
      problems > 0 ? counted(problems, "kind of problem", "kinds of problems") : "",
      warnings > 0 ? counted(warnings, "kind of warning", "kinds of warnings") : "",
    ].filter((words) => words);
  }

  nameOf(row) {
    const { id, name } = this.instruments[row];
    return name ? `${id} ${name}` : String(id);
  }
}

/** The chart on a canvas that shows only what is in view. */
class LayoutMap {
  constructor(host, chart, choose) {
    this.chart = chart;
    this.choose = choose;
    this.columns = [...Array(chart.count).keys()];
    this.row = 0;
    this.column = 0;
    this.isFocused = false;
    this.pending = false;
    this.build(host);
    this.measure();
    this.listen();
    this.draw();
  }

  build(host) {
    this.filter = make("input", { type: "checkbox", id: "map-filter" });
    this.canvas = make("canvas", {
      id: "map-canvas",
      tabindex: "0",
      role: "application",
      "aria-roledescription": "layout map",
      "aria-label":
        "Layout map. Arrow keys move between instruments and systems, N goes to the next system that differs, Enter shows the system.",
      "aria-describedby": "map-status",
    });
    this.sizer = make("div", { class: "map-sizer" }, this.canvas);
    this.frame = make("div", { class: "map-frame" }, this.sizer);
    this.status = make("p", { class: "map-status", id: "map-status", role: "status" }, MAP_HINT);
    this.printed = make("div", { class: "print-map" });
    const label = make("label", {}, this.filter, "Only systems that differ or have problems");
    host.append(make("p", { class: "actions" }, label), this.frame, this.status, this.legend(), this.printed);
    this.filter.disabled = !this.columns.some((index) => this.chart.differs(index));
  }

  legend(colors = pageColors()) {
    const used = new Set(this.chart.instruments.flatMap((instrument) => [...new Set(instrument.cells)]));
    const entries = [...used].sort().map((kind) => {
      const canvas = make("canvas", { "aria-hidden": "true" });
      drawCell(sizedContext(canvas, 14, 14), kind, { x: 0, y: 0, size: 14 }, colors);
      return make("li", {}, canvas, CELL_WORDS[kind]);
    });
    return make("ul", { class: "legend" }, ...entries);
  }

  measure() {
    const context = this.canvas.getContext("2d");
    context.font = "13px sans-serif";
    const widest = Math.max(...this.chart.instruments.map((_, row) => context.measureText(this.chart.nameOf(row)).width), 40);
    const available = this.frame.clientWidth || 300;
    this.labelWidth = Math.ceil(Math.min(widest + 12, available * 0.4, 320));
    const fitting = Math.floor((available - this.labelWidth - 8) / Math.max(this.columns.length, 1));
    this.cell = Math.min(Math.max(fitting, SMALLEST_CELL), LARGEST_CELL);
    this.head = mapHeadHeight(context, this.chart);
    const width = this.labelWidth + this.columns.length * this.cell + 8;
    const height = this.head + this.chart.instruments.length * this.cell + 8;
    this.sizer.style.width = `${width}px`;
    this.sizer.style.height = `${height}px`;
    this.width = Math.max(Math.min(available, width), 100);
    this.height = Math.max(Math.min(height, innerHeight * 0.7, 704), this.head + this.cell);
    sizedContext(this.canvas, this.width, this.height);
  }

  listen() {
    this.frame.addEventListener("scroll", () => this.drawSoon(), { passive: true });
    new ResizeObserver(() => {
      if (this.frame.clientWidth !== this.seenWidth) {
        this.seenWidth = this.frame.clientWidth;
        this.measure();
        this.drawSoon();
      }
    }).observe(this.frame);
    this.canvas.addEventListener("pointermove", (event) => this.pointAt(event));
    this.canvas.addEventListener("pointerdown", (event) => this.moveCursorTo(event));
    this.canvas.addEventListener("click", (event) => this.click(event));
    this.canvas.addEventListener("keydown", (event) => this.press(event));
    this.canvas.addEventListener("focus", () => this.setFocus(true));
    this.canvas.addEventListener("blur", () => this.setFocus(false));
    this.filter.addEventListener("change", () => this.applyFilter());
    onColorsChange(() => {
      this.frame.parentElement.querySelector(".legend").replaceWith(this.legend());
      this.measure();
      this.drawSoon();
    });
  }

  /** What a sheet of paper shows in place of the map on the screen. */
  printable() {
    return [...printedMaps(this.chart, this.columns), this.legend(PAPER_COLORS)];
  }

  setFocus(isFocused) {
    this.isFocused = isFocused;
    if (isFocused) {
      this.describe();
    }
    this.drawSoon();
  }

  applyFilter() {
    const all = [...Array(this.chart.count).keys()];
    this.columns = this.filter.checked ? all.filter((index) => this.chart.differs(index)) : all;
    this.column = 0;
    this.frame.scrollLeft = 0;
    this.measure();
    this.drawSoon();
    this.status.textContent = `${counted(this.columns.length, "system", "systems")} in the map`;
  }

  drawSoon() {
    if (!this.pending) {
      this.pending = true;
      requestAnimationFrame(() => {
        this.pending = false;
        this.draw();
      });
    }
  }

  draw() {
    drawMapPart(this.canvas.getContext("2d"), {
      chart: this.chart,
      columns: this.columns,
      left: this.frame.scrollLeft,
      top: this.frame.scrollTop,
      width: this.width,
      height: this.height,
      labelWidth: this.labelWidth,
      cell: this.cell,
      head: this.head,
      cursor: this.isFocused ? { row: this.row, column: this.column } : null,
    });
  }

  /** The cell under a pointer; null beside the cells. */
  cellAt(event) {
    const box = this.canvas.getBoundingClientRect();
    const x = event.clientX - box.left - this.labelWidth;
    const y = event.clientY - box.top - this.head;
    const column = Math.floor((x + this.frame.scrollLeft) / this.cell);
    const row = Math.floor((y + this.frame.scrollTop) / this.cell);
    const isInside = x >= 0 && column < this.columns.length && row < this.chart.instruments.length;
    return isInside ? { column, row: y < 0 ? -1 : row } : null;
  }

  pointAt(event) {
    const cell = this.cellAt(event);
    if (cell) {
      this.status.textContent = this.words(cell.column, cell.row);
    }
  }

  /** Before the focus comes, which describes the cell of the cursor. */
  moveCursorTo(event) {
    const cell = this.cellAt(event);
    if (cell) {
      this.column = cell.column;
      this.row = Math.max(cell.row, 0);
    }
    return cell;
  }

  click(event) {
    const cell = this.moveCursorTo(event);
    if (cell) {
      this.choose(this.columns[cell.column] + 1);
    }
  }

  words(column, row) {
    const index = this.columns[column];
    const { chart } = this;
    const layout = chart.labels[chart.layoutOf[index]];
    const page = chart.pages[chart.pageOf[index]];
    const cell = row < 0 ? "" : `${chart.nameOf(row)}: ${CELL_WORDS[chart.instruments[row].cells[index]]}. `;
    const parts = [`System ${index + 1}`, `page ${page.name}`, `layout ${layout ? layout.label : "A"}`, ...chart.kindsOf(index + 1)];
    return `${cell}${parts.join(", ")}.`;
  }

  describe() {
    this.status.textContent = this.words(this.column, this.row);
  }

  press(event) {
    if (event.altKey || event.ctrlKey || event.metaKey) {
      return; // a key of the browser, such as Alt and the left arrow
    }
    const page = Math.max(Math.floor((this.width - this.labelWidth) / this.cell) - 1, 1);
    const steps = {
      ArrowLeft: [-1, 0],
      ArrowRight: [1, 0],
      ArrowUp: [0, -1],
      ArrowDown: [0, 1],
      PageUp: [-page, 0],
      PageDown: [page, 0],
      Home: [-this.columns.length, 0],
      End: [this.columns.length, 0],
    };
    if (event.key === "Enter" || event.key === " ") {
      this.choose(this.columns[this.column] + 1);
    } else if (event.key === "n" || event.key === "N") {
      const next = this.columns.findIndex((index, column) => column > this.column && this.chart.differs(index));
      this.moveTo(next < 0 ? this.column : next, this.row);
    } else if (steps[event.key]) {
      const [columns, rows] = steps[event.key];
      this.moveTo(this.column + columns, this.row + rows);
    } else {
      return;
    }
    event.preventDefault();
  }

  moveTo(column, row) {
    this.column = Math.min(Math.max(column, 0), this.columns.length - 1);
    this.row = Math.min(Math.max(row, 0), this.chart.instruments.length - 1);
    const x = this.column * this.cell;
    const y = this.row * this.cell;
    const spaceX = this.width - this.labelWidth - this.cell;
    const spaceY = this.height - this.head - this.cell;
    this.frame.scrollLeft = Math.min(Math.max(this.frame.scrollLeft, x - spaceX), x);
    this.frame.scrollTop = Math.min(Math.max(this.frame.scrollTop, y - spaceY), y);
    this.describe();
    this.drawSoon();
  }
}
