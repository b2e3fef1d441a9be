// Makes the groups of pages that the tests are about.
import { execFileSync, spawnSync } from "node:child_process";
import { copyFileSync, mkdirSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { fileURLToPath } from "node:url";

export const kivsys = process.env.KIVSYS;
export const work = process.env.WORK;
const example = fileURLToPath(new URL("../../examples/beethoven-9/", import.meta.url));

/** A new folder of that name. */
export function folder(name) {
  const path = `${work}/${name}`;
  rmSync(path, { recursive: true, force: true });
  mkdirSync(path, { recursive: true });
  return path;
}

export function build(path, text) {
  execFileSync(kivsys, ["build", "--force", "-", path], { input: text });
}

/** Runs kivsys in a folder; returns its status and output. */
export function run(path, ...options) {
  const { status, stdout, stderr } = spawnSync(kivsys, options, { cwd: path, encoding: "utf8", maxBuffer: 1 << 28 });
  return { status, out: stdout, error: stderr };
}

export function pagesIn(path) {
  return readdirSync(path).filter((name) => name.endsWith(".MUS"));
}

/** The report of all pages in a folder; the status must be the one expected. */
export function reportOf(path, expected, ...options) {
  const { status, error } = run(path, "report", ...pagesIn(path), "-o", "report.html", ...options);
  if (status !== expected) {
    throw new Error(`status ${status} instead of ${expected}: ${error}`);
  }
  return `${path}/report.html`;
}

/** The bundled example: its systems differ, and a page consists of two files. */
export function exampleGroup(name = "example") {
  const path = folder(name);
  for (const text of readdirSync(example).filter((file) => file.startsWith("SYMPH"))) {
    build(`${path}/${text.replace(".txt", ".MUS")}`, readFileSync(example + text));
  }
  return path;
}

/** One staff with its name, a clef and some notes. */
function staff(number, { id, clef = 0, name = "", notes = 4, extra = "" }) {
  let text = `staff ${number} at 10 lines 5 instrument ${id}\nclef ${number} at 12 kind ${clef}\n`;
  text += name ? `text ${number} at 1 p4 3 "${name}"\n` : "";
  for (let note = 0; note < notes; ++note) {
    text += `note ${number} at ${24 + 10 * note} height ${(note * 3 + number) % 9} duration ${[1, 0.5, 2, 4][note % 4]}\n`;
  }
  return `${text}${extra}barline ${number} at 70 spans 1\n`;
}

/** A page of one system; the staves are given from the top down. */
export function page(staves) {
  const count = staves.length;
  return `${staves.map((one, index) => staff(count - index, one)).join("")}barline 1 at 10 spans ${count}\n`;
}

export const hostile = "</script><script>window.hacked=1</script><img src=x onerror='window.hacked=1'>";
export const longName = "Kontrabassklarinette in B und Bassettklarinette in Es (Donaudampfschifffahrtsgesellschaftskapelle)";

/** Ids of 0 and twice, a cue of nobody, a damaged page, names that attack, and names that are long. */
export function brokenGroup(name = "broken") {
  const path = folder(name);
  const flute = { id: 101, name: hostile };
  const viola = { id: 110, clef: 2, name: longName };
  const bass = { id: 112, clef: 1, name: "Kontrabässe" };
  for (let number = 1; number <= 6; ++number) {
    build(`${path}/KANTATE00${number}.MUS`, page([flute, viola, bass]));
  }
  build(`${path}/KANTATE007.MUS`, page([flute, { ...viola, id: 0 }, bass]));
  build(`${path}/KANTATE008.MUS`, page([flute, viola, { ...bass, id: 110 }]));
  build(`${path}/KANTATE009.MUS`, page([{ ...flute, extra: "rest 3 at 60 kind -2 cue 1122\n" }, viola, bass]));
  writeFileSync(`${path}/KANTATE010.MUS`, readFileSync(`${path}/KANTATE001.MUS`).subarray(0, 90));
  return path;
}

/** Pages that can be used as they are. */
export function usableGroup(name = "usable") {
  const path = folder(name);
  for (let number = 1; number <= 3; ++number) {
    build(`${path}/LIED00${number}.MUS`, page([{ id: 101, name: "Sopran" }, { id: 102, name: "Klavier" }]));
  }
  return path;
}

/** A page of several systems of many instruments, of which about a quarter is missing in each. */
function orchestralPage(systems, instruments, seed) {
  let text = "";
  let number = 0;
  for (let system = 0; system < systems; ++system) {
    const first = number + 1;
    for (let instrument = instruments - 1; instrument >= 0; --instrument) {
      if ((instrument * 7 + (seed * systems + system) * 3 + instrument * system) % 4 !== 1) {
        text += staff(++number, { id: 101 + instrument, clef: instrument % 3, name: `Stimme ${instrument + 1}`, notes: 4 + ((seed + instrument) % 5) });
      }
    }
    text += `barline ${first} at 10 spans ${number - first + 1}\n`;
  }
  return text;
}

/** A large group: so many pages of so many systems each, of some kinds that repeat. */
export function largeGroup(name, { pages, systems, instruments }) {
  const path = folder(name);
  const kinds = 40;
  for (let number = 1; number <= pages; ++number) {
    const target = `${path}/OPER${String(number).padStart(5, "0")}.MUS`;
    if (number <= kinds) {
      build(target, orchestralPage(systems, instruments, number));
    } else {
      copyFileSync(`${path}/OPER${String(((number - 1) % kinds) + 1).padStart(5, "0")}.MUS`, target);
    }
  }
  return path;
}
