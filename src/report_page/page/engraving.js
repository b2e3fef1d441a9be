"use strict";

// Reads the characters that picture_code.cpp makes of a staff, and draws them as it would be on a page of music.

const CODE_DIGITS = "!#$%()*+,-./0123456789:;=?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[]^_`abcdefghijklmnopqrstuvwxyz{|}~'";
const CODE_VALUES = new Map([...CODE_DIGITS].map((digit, value) => [digit, value]));
const FIRST_REST = 21;
const KINDS = {
  barRest: 42,
  clef: 43,
  key: 44,
  time: 45,
  short: 46,
  long: 47,
  counted: 48,
  id: 49,
  unknown: 50,
  cue: 51,
  barline: 52,
  brace: 53,
  bracket: 54,
};
const GLYPHS = {
  clefs: [0, 1, 2],
  heads: [3, 4, 5],
  flagUp: 6,
  flagDown: 7,
  shortFlagUp: 8,
  shortFlagDown: 9,
  dot: 10,
  wholeRest: 11,
  halfRest: 12,
  quarterRest: 13,
  hook: 14,
  sharp: 15,
  flat: 16,
  digits: 17,
  common: 27,
  cut: 28,
  unknown: 29,
};
const STEP = 5;
const LEFT_OF_ZERO = 200;
const LOWEST_HEIGHT = 24;

/** How many digits follow the position of an item of a kind. */
function digitsOfKind(kind) {
  const { clef, key, time, short, long, counted: countedText, id, unknown, cue, barline } = KINDS;
  if (kind < KINDS.clef || kind >= barline) {
    return [1];
  }
  if (kind === clef || kind === key) {
    return [1, 1];
  }
  if (kind === short || kind === long || kind === countedText) {
    return [2, 3];
  }
  return [time, id, unknown, cue].includes(kind) ? [3] : [];
}

/** The items of a code: their kind, x from position 0, and numbers. */
function decodeItems(code) {
  const items = [];
  let at = 0;
  const number = (places) => {
    let value = 0;
    for (let place = 0; place < places; ++place) {
      value = value * CODE_DIGITS.length + CODE_VALUES.get(code[at++]);
    }
    return value;
  };
  while (at < code.length) {
    const kind = number(1);
    const x = number(2) - LEFT_OF_ZERO;
    items.push({ kind, x, numbers: digitsOfKind(kind).map((places) => number(places)) });
  }
  return items;
}

/** The staff lines and what is on them. */
class StaffEngraver {
  constructor(sheet, staff, texts) {
    this.sheet = sheet;
    this.staff = staff;
    this.texts = texts;
    this.topLine = staff.lines > 0 ? 2 * (staff.lines - 1) : 8;
    this.middle = this.topLine / 2;
  }

  y(height) {
    return this.staff.bottom - STEP * height;
  }

  draw() {
    for (let line = 0; line < this.staff.lines; ++line) {
      this.sheet.line(this.staff.left, this.y(2 * line), this.staff.right, this.y(2 * line), "thin");
    }
    if (this.staff.id) {
      this.sheet.text(this.staff.id, this.staff.left - 20, this.y(this.middle - 1), "id");
    }
    const notes = [];
    for (const item of this.staff.items) {
      if (item.kind < FIRST_REST) {
        notes.push(item);
      } else {
        this.drawItem(item);
      }
    }
    this.drawNotes(notes);
  }

  drawItem({ kind, x, numbers }) {
    const text = this.texts[numbers.at(-1)];
    if (kind <= KINDS.barRest) {
      this.drawRest(kind, x, numbers[0] - LOWEST_HEIGHT);
    } else if (kind === KINDS.clef) {
      const base = [2, 6, 4][numbers[0]] + numbers[1] - LOWEST_HEIGHT + this.middle - 4;
      this.sheet.glyph(GLYPHS.clefs[numbers[0]], x + (numbers[0] === 0 ? 13 : 0), this.y(base));
    } else if (kind === KINDS.key) {
      this.drawKey(x, numbers[0] - 7, numbers[1]);
    } else if (kind === KINDS.time) {
      this.drawTime(x + 8, text);
    } else if (kind === KINDS.id) {
      this.sheet.text(text, x, this.y(this.middle - 1), "id");
    } else if (kind === KINDS.cue) {
      this.sheet.text(text, x, this.y(this.topLine + 3), "cue");
    } else if (kind === KINDS.unknown) {
      this.sheet.glyph(GLYPHS.unknown, x, this.y(this.topLine + 4)).append(titleOf(text));
    } else {
      const style = kind === KINDS.short ? "short" : kind === KINDS.long ? "long" : "counted";
      this.sheet.text(text, x, this.y(numbers[0] / 2 - LOWEST_HEIGHT), style);
    }
  }

  drawRest(kind, x, raised) {
    const height = this.middle + raised;
    const halvings = kind === KINDS.barRest ? 0 : Math.floor((kind - FIRST_REST) / 3);
    const dots = kind === KINDS.barRest ? 0 : (kind - FIRST_REST) % 3;
    if (halvings === 0) {
      this.sheet.glyph(GLYPHS.wholeRest, x, this.y(this.staff.lines === 1 ? height : height + 2));
    } else if (halvings < 3) {
      this.sheet.glyph(halvings === 1 ? GLYPHS.halfRest : GLYPHS.quarterRest, x, this.y(height));
    } else {
      const hooks = halvings - 2;
      const top = this.y(height) - (hooks > 2 ? 10 : 0);
      for (let hook = 0; hook < hooks; ++hook) {
        this.sheet.glyph(GLYPHS.hook, x - 2.5 * hook, top + 10 * hook);
      }
      const length = 10 * hooks + 6;
      this.sheet.line(x + 4, top - 6, x + 4 - length / 4, top - 6 + length, "thin");
    }
    for (let dot = 0; dot < dots; ++dot) {
      this.sheet.glyph(GLYPHS.dot, x + 12 + 6 * dot, this.y(height + 1));
    }
  }

  drawKey(x, key, lowered) {
    const heights = key > 0 ? [8, 5, 9, 6, 3, 7, 4] : [4, 7, 3, 6, 2, 5, 1];
    for (let i = 0; i < Math.abs(key); ++i) {
      const height = heights[i] - lowered + this.middle - 4;
      this.sheet.glyph(key > 0 ? GLYPHS.sharp : GLYPHS.flat, x + 5 + 10 * i, this.y(height));
    }
  }

  drawTime(middle, text) {
    if (text === "C" || text === "C|") {
      this.sheet.glyph(GLYPHS.common, middle, this.y(this.middle));
      if (text === "C|") {
        this.sheet.glyph(GLYPHS.cut, middle, this.y(this.middle));
      }
      return;
    }
    const numbers = text.split("/");
    if (!numbers.every((number) => /^[1-9]\d{0,2}$/.test(number))) {
      this.sheet.glyph(GLYPHS.unknown, middle, this.y(this.topLine + 4)).append(titleOf(`time signature ${text}`));
      return;
    }
    numbers.forEach((number, index) => {
      [...number].forEach((digit, place) => {
        const x = middle + 14 * (place - (number.length - 1) / 2);
        this.sheet.glyph(GLYPHS.digits + Number(digit), x, this.y(this.middle + (index === 0 ? 2 : -2)));
      });
    });
  }

  drawNotes(notes) {
    notes.sort((a, b) => a.x - b.x);
    for (let first = 0; first < notes.length; ) {
      const chord = [];
      const { x } = notes[first];
      for (; first < notes.length && notes[first].x === x; ++first) {
        chord.push({ height: notes[first].numbers[0] - LOWEST_HEIGHT, value: notes[first].kind });
        this.drawHead(x, chord.at(-1));
      }
      this.drawStem(x, chord);
    }
  }

  drawHead(x, { height, value }) {
    const ledger = (line) => this.sheet.line(x - 10, this.y(line), x + 10, this.y(line), "thin");
    for (let line = -2; line >= height; line -= 2) {
      ledger(line);
    }
    for (let line = this.topLine + 2; line <= height; line += 2) {
      ledger(line);
    }
    this.sheet.glyph(GLYPHS.heads[Math.min(Math.floor(value / 3), 2)], x, this.y(height));
    for (let dot = 0; dot < value % 3; ++dot) {
      this.sheet.glyph(GLYPHS.dot, x + 12 + 6 * dot, this.y(height + (height % 2 === 0 ? 1 : 0)));
    }
  }

  /** The stem points away from the note that is farthest from the middle line. */
  drawStem(x, chord) {
    const halvings = Math.floor(chord[0].value / 3);
    if (halvings === 0) {
      return;
    }
    const heights = chord.map((note) => note.height);
    const lowest = Math.min(...heights);
    const highest = Math.max(...heights);
    const isUp = highest - this.middle < this.middle - lowest;
    const stem = isUp ? x + 5.5 : x - 5.5;
    const end = this.y(isUp ? Math.max(highest + 7, this.middle) : Math.min(lowest - 7, this.middle));
    this.sheet.line(stem, this.y(isUp ? lowest + 0.5 : highest - 0.5), stem, end, "thin");
    const flags = halvings - 2;
    const names = flags > 1 ? ["shortFlagUp", "shortFlagDown"] : ["flagUp", "flagDown"];
    for (let flag = 0; flag < flags; ++flag) {
      this.sheet.glyph(GLYPHS[names[isUp ? 0 : 1]], stem, end + (isUp ? 8 : -8) * flag);
    }
  }
}
