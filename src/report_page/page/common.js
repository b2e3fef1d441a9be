"use strict";

/** An element with attributes and children; a child is an element or a text, which stays a text. */
function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value !== false && value !== null) {
      element.setAttribute(name, value === true ? "" : value);
    }
  }
  element.append(...children);
  return element;
}

function byId(id) {
  return document.getElementById(id);
}

/** The numbers of which pairs say how often each follows itself. */
function expandRuns(runs) {
  const numbers = [];
  for (let i = 0; i < runs.length; i += 2) {
    for (let n = 0; n < runs[i + 1]; ++n) {
      numbers.push(runs[i]);
    }
  }
  return numbers;
}

/** The colors of the page's style, which differ by scheme and contrast. */
function pageColors() {
  const style = getComputedStyle(document.documentElement);
  const color = (name) => style.getPropertyValue(name).trim();
  return {
    card: color("--card"),
    ink: color("--ink"),
    soft: color("--soft"),
    line: color("--line"),
    focus: color("--focus"),
    bad: color("--bad"),
    cells: [color("--cell-missing"), color("--cell"), color("--cell-double"), color("--cell-zero")],
  };
}

/** Calls back when the scheme, the contrast or the size of a pixel changes. */
function onColorsChange(callback) {
  for (const query of ["(prefers-color-scheme: dark)", "(forced-colors: active)", "(prefers-contrast: more)"]) {
    matchMedia(query).addEventListener("change", callback);
  }
}

/** Gives a canvas its size in pixels of the page; returns its context, in which a unit is such a pixel. */
function sizedContext(canvas, width, height) {
  const ratio = Math.max(devicePixelRatio || 1, 1);
  canvas.width = Math.round(width * ratio);
  canvas.height = Math.round(height * ratio);
  canvas.style.width = `${width}px`;
  canvas.style.height = `${height}px`;
  const context = canvas.getContext("2d");
  context.setTransform(ratio, 0, 0, ratio, 0, 0);
  return context;
}

const CELL_WORDS = ["missing, gets a rest staff", "one staff", "several staves of one id", "staff without an id"];

/** Draws a cell of a layout map: kinds differ in shape as well as in color. */
function drawCell(context, kind, box, colors) {
  const { x, y, size } = box;
  const inner = Math.max(size - 2, 1);
  context.fillStyle = colors.cells[kind];
  context.strokeStyle = colors.cells[kind];
  if (kind === 0) {
    context.lineWidth = 1;
    if (size < 5) {
      context.fillRect(x, y + size / 2 - 0.5, inner, 1);
      return;
    }
    context.strokeRect(x + 1.5, y + 1.5, inner - 2, inner - 2);
    context.beginPath();
    context.moveTo(x + 1, y + inner);
    context.lineTo(x + inner, y + 1);
    context.stroke();
    return;
  }
  context.fillRect(x, y, inner, inner);
  if (kind > 1 && size >= 8) {
    context.fillStyle = colors.card;
    context.font = `bold ${size - 4}px sans-serif`;
    context.textAlign = "center";
    context.textBaseline = "middle";
    context.fillText(kind === 2 ? "2" : "0", x + inner / 2, y + inner / 2 + 0.5);
  }
}

/** The number with a word that fits it. */
function counted(number, one, many) {
  return `${number} ${number === 1 ? one : many}`;
}
