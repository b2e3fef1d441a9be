"use strict";

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
