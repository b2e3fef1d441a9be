"use strict";

const SVG_SPACE = "http://www.w3.org/2000/svg";

/** An element of a drawing with attributes. */
function draw(tag, attributes = {}) {
  const element = document.createElementNS(SVG_SPACE, tag);
  for (const [name, value] of Object.entries(attributes)) {
    element.setAttribute(name, value);
  }
  return element;
}

function titleOf(text) {
  const title = draw("title");
  title.textContent = text;
  return title;
}

/** A drawing that lines, symbols and texts are added to. Symbols have x from position 0 of the page. */
class Sheet {
  constructor(width, height, origin) {
    this.origin = origin;
    this.svg = draw("svg", { viewBox: `0 0 ${width} ${height}`, width: width * 0.75, height: height * 0.75, role: "img" });
    this.group = this.svg;
  }

  add(element) {
    this.group.append(element);
    return element;
  }

  line(x1, y1, x2, y2, style) {
    this.add(draw("path", { class: style, d: `M${x1} ${y1}L${x2} ${y2}` }));
  }

  glyph(number, x, y) {
    return this.add(draw("use", { href: `#glyph-${number}`, x, y }));
  }

  text(content, x, y, style) {
    const element = this.add(draw("text", { class: style, x, y }));
    element.textContent = content;
    return element;
  }

  rect(x, y, width, height, style) {
    return this.add(draw("rect", { class: style, x, y, width, height }));
  }
}

function staffOf([code, barlines, bottom, left, right, lines, id, inserted], origin, codes) {
  const place = (items) => items.map((item) => ({ ...item, x: item.x + origin }));
  return {
    items: place(decodeItems(codes[code])),
    barlines: place(decodeItems(codes[barlines])),
    bottom,
    left,
    right,
    lines,
    id,
    isInserted: inserted === 1,
    top: bottom - 10 * Math.max(lines - 1, 0),
  };
}

/** The outline of a brace with its ends at x and its tip to the left. */
function bracePath(x, top, bottom) {
  const middle = (top + bottom) / 2;
  const end = (bottom - top) * 0.22;
  const tip = (bottom - top) * 0.18;
  const half = (side) =>
    `C${x - side * 10} ${top + end} ${x + 4} ${middle - tip} ${x - 12} ${middle}` +
    `C${x + 4} ${middle + tip} ${x - side * 10} ${bottom - end} ${x} ${bottom}`;
  return `M${x} ${top}${half(1.6)}`;
}

function drawBarlines(sheet, staff, staves, index) {
  const beyond = (one) => (one.lines === 1 ? 10 : 0);
  for (const { kind, x, numbers } of staff.barlines) {
    const upper = staves[Math.min(index + numbers[0], staves.length - 1)];
    const top = upper.top - beyond(upper);
    const bottom = staff.bottom + beyond(staff);
    if (kind === KINDS.barline) {
      sheet.line(x, top, x, bottom, "thick");
    } else if (kind === KINDS.brace) {
      sheet.add(draw("path", { class: "thick", d: bracePath(x - 3, top, bottom) }));
    } else {
      sheet.add(draw("path", { class: "bracket", d: `M${x} ${top - 3}H${x - 6}V${bottom + 3}H${x}` }));
    }
  }
}

/** What lies under the notes: staves that a conversion inserted, and staves with problems. */
function drawTints(sheet, staves, problems, proposals) {
  const tint = (staff, style) => sheet.rect(staff.left, staff.top - 12, staff.right - staff.left, staff.bottom - staff.top + 24, style);
  staves.filter((staff) => staff.isInserted).forEach((staff) => tint(staff, "inserted"));
  const marked = (marks) => new Set(marks.filter(([, x]) => x < 0).map(([staff]) => staff));
  marked(problems).forEach((staff) => tint(staves[staff], "faulty"));
  marked(proposals).forEach((staff) => tint(staves[staff], "doubtful"));
}

/** A frame around something on a staff, from x to another. */
function drawFrame(sheet, staff, x, right, words) {
  const frame = sheet.rect(x, staff.top - 12, right - x, staff.bottom - staff.top + 24, "mark");
  frame.append(titleOf(words));
}

/** Marks and words over the notes. Words about bars are written once for each staff. */
function drawMarks(sheet, staves, picture, report) {
  const [, , , , problems, proposals] = picture;
  const said = new Set();
  const lines = new Map();
  const lineOf = (staff) => {
    const line = lines.get(staff) ?? 0;
    lines.set(staff, line + 1);
    return staves[staff].top - 16 - 15 * line;
  };
  for (const [staff, x, about, right] of problems) {
    const words = report.problems[about][0];
    if (right !== undefined) {
      drawFrame(sheet, staves[staff], x, right, words);
      if (said.has(`${staff} ${about}`)) {
        continue;
      }
      said.add(`${staff} ${about}`);
    } else if (x >= 0) {
      sheet.add(draw("ellipse", { class: "mark", cx: x + 4, cy: (staves[staff].top + staves[staff].bottom) / 2, rx: 16, ry: 32 }));
    }
    sheet.text(words, x >= 0 ? x - 12 : staves[staff].left + 60, lineOf(staff), "says");
  }
  for (const [staff, x, about] of proposals) {
    sheet.text(report.proposals[about][1], x >= 0 ? x - 12 : staves[staff].left + 4, lineOf(staff), "proposed");
  }
}

/** The picture of a page or a system as a drawing. */
function drawPicture(picture, report, label) {
  const [width, height, origin, rows, problems, proposals] = picture;
  const { codes, texts } = report.pictures;
  const sheet = new Sheet(width, height, origin);
  sheet.svg.append(titleOf(label));
  sheet.svg.setAttribute("aria-label", label);
  const staves = rows.map((row) => staffOf(row, origin, codes));
  drawTints(sheet, staves, problems, proposals);
  staves.forEach((staff, index) => {
    new StaffEngraver(sheet, staff, texts).draw();
    drawBarlines(sheet, staff, staves, index);
  });
  drawMarks(sheet, staves, picture, report);
  return sheet.svg;
}

/** The symbols that all drawings of the page use. */
function glyphDefinitions(paths) {
  const svg = draw("svg", { width: 0, height: 0, "aria-hidden": "true" });
  const definitions = draw("defs");
  paths.forEach((path, number) => definitions.append(draw("path", { id: `glyph-${number}`, d: path })));
  svg.append(definitions);
  return svg;
}
