// What the pages consist of, as src/report_page/pages.cmake says.
import { readFileSync } from "node:fs";
import { fileURLToPath } from "node:url";

export const sourceFolder = fileURLToPath(new URL("../../src/report_page/", import.meta.url));

/** The names of the embedded texts with the files that each consists of. */
export function embeddedTexts() {
  const list = readFileSync(`${sourceFolder}pages.cmake`, "utf8");
  return new Map([...list.matchAll(/^set\((\w+_(?:html|css|js)) ([^)]*)\)/gm)].map(([, name, files]) => [name, files.split(" ")]));
}

/** The whole text of that name. */
export function embeddedText(name) {
  return embeddedTexts().get(name).map((file) => readFileSync(`${sourceFolder}page/${file}`, "utf8")).join("");
}
