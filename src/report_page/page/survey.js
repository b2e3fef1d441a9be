"use strict";

/** The layouts of a piece in small: a unit for each character of the map. */
function drawSmallMap(cell, colors) {
  const rows = cell.dataset.map.split(",");
  if (rows[0] === "") {
    return;
  }
  const unit = 4;
  const canvas = make("canvas", { role: "img", "aria-label": smallMapWords(rows) });
  const context = sizedContext(canvas, rows[0].length * unit, rows.length * unit);
  context.strokeStyle = colors.line;
  context.fillStyle = colors.cells[1];
  rows.forEach((row, y) => {
    [...row].forEach((kind, x) => {
      if (kind === "1") {
        context.fillRect(x * unit, y * unit, unit - 0.5, unit - 0.5);
      } else if (kind === "2") {
        context.fillRect(x * unit, y * unit + unit / 2, unit - 0.5, unit / 2 - 0.5);
      }
    });
  });
  cell.replaceChildren(canvas);
}

function smallMapWords(rows) {
  const all = rows.join("");
  const present = [...all].filter((kind) => kind === "1").length;
  return `${Math.round((100 * present) / all.length)} percent of the staves are there`;
}

/** Maps are drawn when they come into view. */
function startSmallMaps() {
  const cells = [...document.querySelectorAll(".small-map")];
  const drawn = new Set();
  const observer = new IntersectionObserver((entries) => {
    const colors = pageColors();
    for (const { isIntersecting, target } of entries) {
      if (isIntersecting && !drawn.has(target)) {
        drawn.add(target);
        drawSmallMap(target, colors);
      }
    }
  });
  cells.forEach((cell) => observer.observe(cell));
  const drawAgain = (again) => {
    const colors = pageColors();
    again.forEach((cell) => drawSmallMap(cell, colors));
  };
  onColorsChange(() => drawAgain(drawn));
  addEventListener("beforeprint", () => drawAgain(cells));
}

/** What a row is sorted by in a column: a number if it is one, else the text. */
function sortKey(row, column) {
  const text = row.children[column].textContent.trim();
  return /^\d+$/.test(text) ? Number(text) : text.toLocaleLowerCase();
}

function compareKeys(a, b) {
  if (typeof a === "number" && typeof b === "number") {
    return a - b;
  }
  return typeof a === typeof b ? a.localeCompare(b, undefined, { numeric: true }) : typeof a === "number" ? 1 : -1;
}

function sortBy(table, head, column) {
  const isAscending = head.getAttribute("aria-sort") !== "ascending";
  table.querySelectorAll("th[aria-sort]").forEach((other) => other.removeAttribute("aria-sort"));
  head.setAttribute("aria-sort", isAscending ? "ascending" : "descending");
  const [body] = table.tBodies;
  const rows = [...body.rows].map((row) => ({ row, key: sortKey(row, column) }));
  rows.sort((a, b) => (isAscending ? 1 : -1) * compareKeys(a.key, b.key));
  body.append(...rows.map(({ row }) => row));
}

function startSorting(table) {
  [...table.tHead.rows[0].cells].forEach((head, column) => {
    if (head.dataset.unsorted === undefined) {
      const button = make("button", { type: "button" }, head.textContent);
      head.replaceChildren(button);
      button.addEventListener("click", () => sortBy(table, head, column));
    }
  });
}

function startFilter(table) {
  const find = byId("survey-find");
  const verdict = byId("survey-verdict");
  const rows = [...table.tBodies[0].rows].map((row) => ({ row, text: row.textContent.toLocaleLowerCase() }));
  const apply = () => {
    const wanted = find.value.trim().toLocaleLowerCase();
    let shown = 0;
    for (const { row, text } of rows) {
      row.hidden = !text.includes(wanted) || (verdict.value !== "" && row.dataset.verdict !== verdict.value);
      shown += row.hidden ? 0 : 1;
    }
    byId("survey-count").textContent = `${shown} of ${counted(rows.length, "piece", "pieces")}`;
  };
  find.addEventListener("input", apply);
  verdict.addEventListener("change", apply);
  byId("survey-actions").hidden = false;
  apply();
}

startSmallMaps();
startSorting(byId("pieces"));
startFilter(byId("pieces"));
