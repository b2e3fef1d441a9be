"use strict";

/** Text that ends with an ellipsis where it is too wide; with keepsEnd it begins with one, and numbers at its end stay. */
function fittingText(context, text, width, keepsEnd = false) {
  if (context.measureText(text).width <= width) {
    return text;
  }
  let length = Math.max(Math.floor((text.length * width) / context.measureText(text).width), 0);
  const part = () => (keepsEnd ? `…${text.slice(text.length - length)}` : `${text.slice(0, length)}…`);
  while (length > 0 && context.measureText(part()).width > width) {
    --length;
  }
  return length > 0 ? part() : "";
}

/** The columns and rows that are in view, the last ones not included. */
function visibleCells(view) {
  const count = view.chart.instruments.length;
  return {
    firstColumn: Math.max(Math.floor(view.left / view.cell), 0),
    endColumn: Math.min(Math.ceil((view.left + view.width - view.labelWidth) / view.cell), view.columns.length),
    firstRow: Math.max(Math.floor(view.top / view.cell), 0),
    endRow: Math.min(Math.ceil((view.top + view.height - view.head) / view.cell), count),
  };
}

function drawMapCells(context, view, visible, colors) {
  for (let row = visible.firstRow; row < visible.endRow; ++row) {
    const { cells } = view.chart.instruments[row];
    const y = view.head + row * view.cell - view.top;
    for (let column = visible.firstColumn; column < visible.endColumn; ++column) {
      const x = view.labelWidth + column * view.cell - view.left;
      drawCell(context, cells[view.columns[column]], { x: x + 1, y: y + 1, size: view.cell - 1 }, colors);
    }
  }
}

/** The height of the names of pages, which stand upright, and the numbers of systems. */
function mapHeadHeight(context, chart) {
  context.font = "12px sans-serif";
  const widest = Math.max(...chart.pages.map((page) => context.measureText(page.name).width), 20);
  return Math.ceil(Math.min(widest, 150)) + 40;
}

/** The name of a page over its first system, read from below. */
function drawPageName(context, view, x, name) {
  const height = view.head - 34;
  context.save();
  context.font = `${Math.min(view.cell, 12)}px sans-serif`;
  context.translate(x + view.cell / 2 + 4, height);
  context.rotate(-Math.PI / 2);
  context.fillText(fittingText(context, name, height - 4, true), 0, 0);
  context.restore();
}

/** Names of pages, numbers of systems, and a bar under those that differ. */
function drawMapHead(context, view, visible, colors) {
  context.textBaseline = "alphabetic";
  for (let column = visible.firstColumn; column < visible.endColumn; ++column) {
    const index = view.columns[column];
    const x = view.labelWidth + column * view.cell - view.left;
    const page = view.chart.pageOf[index];
    const isFirst = column === visible.firstColumn || view.chart.pageOf[view.columns[column - 1]] !== page;
    const isDifferent = view.chart.differs(index);
    context.fillStyle = colors.soft;
    context.textAlign = "left";
    if (isFirst) {
      context.fillRect(x, 0, 1, view.head - 8);
      drawPageName(context, view, x, view.chart.pages[page].name);
    }
    const number = String(index + 1);
    context.font = isDifferent ? "bold 11px sans-serif" : "11px sans-serif";
    if (context.measureText(number).width <= view.cell - 3 || (column % 5 === 0 && column + 1 < visible.endColumn)) {
      context.textAlign = "center";
      context.fillText(number, x + view.cell / 2, view.head - 14);
    }
    if (isDifferent) {
      context.fillStyle = colors.bad;
      context.fillRect(x + 1, view.head - 8, view.cell - 3, 4);
    }
  }
}

function drawMapLabels(context, view, visible, colors) {
  context.fillStyle = colors.card;
  context.fillRect(0, 0, view.labelWidth, view.height);
  context.font = `${Math.min(view.cell, 13)}px sans-serif`;
  context.textAlign = "left";
  context.textBaseline = "middle";
  context.fillStyle = colors.ink;
  for (let row = visible.firstRow; row < visible.endRow; ++row) {
    const y = view.head + row * view.cell - view.top + view.cell / 2;
    if (y > view.head) {
      context.fillText(fittingText(context, view.chart.nameOf(row), view.labelWidth - 8), 4, y);
    }
  }
}

function drawMapCursor(context, view, colors) {
  const x = view.labelWidth + view.cursor.column * view.cell - view.left;
  const y = view.head + view.cursor.row * view.cell - view.top;
  context.strokeStyle = colors.focus;
  context.lineWidth = 3;
  context.strokeRect(x - 0.5, y - 0.5, view.cell, view.cell);
}

/** Draws the part of the map that is in view: cells, then what stays in place over them. */
function drawMapPart(context, view) {
  const colors = view.colors ?? pageColors();
  const visible = visibleCells(view);
  context.fillStyle = colors.card;
  context.fillRect(0, 0, view.width, view.height);
  drawMapCells(context, view, visible, colors);
  if (view.cursor) {
    drawMapCursor(context, view, colors);
  }
  context.fillStyle = colors.card;
  context.fillRect(0, 0, view.width, view.head);
  drawMapHead(context, view, visible, colors);
  drawMapLabels(context, view, visible, colors);
}

const PAPER_WIDTH = 680;
const PAPER_HEIGHT = 800;

/** On paper, whatever the scheme of the screen. */
const PAPER_COLORS = {
  card: "#fff",
  ink: "#000",
  soft: "#333",
  line: "#999",
  focus: "#000",
  bad: "#a3231b",
  cells: ["#b98a2c", "#2b6f6a", "#8d3fa0", "#b3261e"],
};

/** How many rows a sheet has room for, whether it is A4 or Letter, so that no row is cut. */
function rowsOnASheet(head, cell) {
  return Math.max(Math.floor((PAPER_HEIGHT - head) / cell), 1);
}

/** A part of the map for a sheet, with its names and heads. */
function printedMap(view, rows) {
  const height = view.head + rows * view.cell + 1;
  const systems = `Systems ${view.columns[0] + 1} to ${view.columns.at(-1) + 1}`;
  const canvas = make("canvas", { role: "img", "aria-label": systems });
  drawMapPart(sizedContext(canvas, view.width, height), { ...view, height });
  return canvas;
}

/** The whole map in canvases of the width of a sheet, for printing. A large one is printed small. */
function printedMaps(chart, columns) {
  const labelWidth = 130;
  const cell = columns.length > 272 ? 10 : 16;
  const perSheet = Math.floor((PAPER_WIDTH - labelWidth) / cell);
  const head = mapHeadHeight(make("canvas").getContext("2d"), chart);
  const most = rowsOnASheet(head, cell);
  const maps = [];
  for (let first = 0; first < columns.length; first += perSheet) {
    const part = columns.slice(first, first + perSheet);
    const width = labelWidth + part.length * cell + 8;
    for (let row = 0; row < chart.instruments.length; row += most) {
      const view = { chart, columns: part, left: 0, top: row * cell, width, labelWidth, cell, head, cursor: null };
      maps.push(printedMap({ ...view, colors: PAPER_COLORS }, Math.min(most, chart.instruments.length - row)));
    }
  }
  return maps;
}
