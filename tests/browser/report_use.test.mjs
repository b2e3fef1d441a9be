// How a report is used: with the history of the browser, with wrong links, without script, and on paper.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { after, afterEach, before, describe, test } from "node:test";

import { closePages, open, openAtSystem, startBrowser, stopBrowser } from "./browser.mjs";
import { brokenGroup, build, exampleGroup, folder, largeGroup, page as pageText, pagesIn, reportOf, run } from "./groups.mjs";

let example = "";
let broken = "";
let tall = "";
let long = "";
let warned = "";

before(async () => {
  await startBrowser();
  example = reportOf(exampleGroup("used-example"), 0);
  broken = reportOf(brokenGroup("used-broken"), 1);
  long = reportOf(largeGroup("long", { pages: 100, systems: 2, instruments: 6 }), 0);
  warned = warnedReport();
  tall = reportOf(largeGroup("tall", { pages: 6, systems: 1, instruments: 60 }), 0);
});
afterEach(closePages);
after(stopBrowser);

/** The results of a system have a warning about a bar far to the right; it is of the commonest layout. */
function warnedReport() {
  const path = folder("warned");
  const bars = (staff, last) => [...Array(20).keys()]
    .map((bar) => `note ${staff} at ${40 + 60 * bar} height 3 duration ${bar === 19 ? last : 4}\nbarline ${staff} at ${80 + 60 * bar} spans 1\n`).join("");
  const staff = (number, id, last) =>
    `staff ${number} at 10 lines 5 instrument ${id}\nclef ${number} at 12\ntimesignature ${number} at 14 upper 4 lower 4\n${bars(number, last)}`;
  const joined = "barline 1 at 10 spans 2\n";
  build(`${path}/LIED001.MUS`, `${staff(2, 101, 4)}${staff(1, 102, 4)}${joined}`);
  build(`${path}/LIED002.MUS`, `${staff(2, 101, 4)}${staff(1, 102, 2)}${joined}`);
  build(`${path}/LIED003.MUS`, `${staff(1, 103, 4)}barline 1 at 10 spans 1\n`);
  const { status, error } = run(path, "convert", "--fit", ...pagesIn(path), "--result", "out/WORK0001.MUS");
  if (status !== 0) {
    throw new Error(error);
  }
  return reportOf(path, 0, "--all", "--result", "out");
}

/** Where the cell of a system and an instrument of the example is, both counted from 0. */
async function cellOf(page, system, row) {
  const cell = 28;
  await page.locator("#map-canvas").evaluate((canvas) => canvas.scrollIntoView({ block: "center" }));
  const box = await page.locator("#map-canvas").boundingBox();
  return { x: box.x + box.width - 8 - cell * (7 - system - 0.5), y: box.y + box.height - 8 - cell * (12 - row - 0.5) };
}

describe("layout map", () => {
  test("describes the cell that is pressed, not the one of the cursor before", async () => {
    const page = await open(example);
    const cell = await cellOf(page, 1, 2);
    await page.mouse.move(cell.x, cell.y);
    const words = await page.locator("#map-status").textContent();
    assert.match(words, /System 2,/);
    await page.mouse.down();
    assert.equal(await page.evaluate(() => document.activeElement.id), "map-canvas");
    assert.equal(await page.locator("#map-status").textContent(), words);
  });

  test("leaves keys of the browser to it", async () => {
    const page = await open(example);
    await page.locator("#map-canvas").focus();
    const isLeft = (options) => page.evaluate((event) =>
      document.activeElement.dispatchEvent(new window.KeyboardEvent("keydown", { cancelable: true, bubbles: true, ...event })), options);
    assert.equal(await isLeft({ key: "ArrowLeft", altKey: true }), true);
    assert.equal(await isLeft({ key: "n", ctrlKey: true }), true);
    assert.equal(await isLeft({ key: "Home", metaKey: true }), true);
    assert.equal(await isLeft({ key: "ArrowLeft" }), false);
  });

  test("is where Back leads from a system that was chosen in it", async () => {
    const page = await open(example);
    const cell = await cellOf(page, 1, 2);
    await page.mouse.click(cell.x, cell.y);
    await page.locator("#system-2[open] svg").waitFor();
    await page.goBack();
    await page.waitForFunction(() => document.activeElement.id === "map-canvas");
    await page.goForward();
    await page.waitForFunction(() => document.activeElement.parentElement.id === "system-2");
  });
});

describe("a link to a system", () => {
  for (const number of ["99999", "0"]) {
    test(`says that there is no system ${number}`, async () => {
      const page = await open(example, { fragment: `#system-${number}` });
      assert.equal(await page.locator("#system-note").textContent(), `There is no system ${number}: the pages have 7 systems.`);
    });
  }
});

describe("a picture", () => {
  test("is scrolled to its first mark when that is out of sight", async () => {
    const page = await openAtSystem(warned, 2);
    await page.waitForFunction(() => document.querySelectorAll("#system-2 .sheet")[1].scrollLeft > 0);
    const [mark, sheet] = await Promise.all([
      page.locator("#system-2 rect.mark").first().boundingBox(),
      page.locator("#system-2 .sheet").nth(1).boundingBox(),
    ]);
    assert.ok(mark.x > sheet.x && mark.x + mark.width < sheet.x + sheet.width, `${mark.x} in ${sheet.x}, ${sheet.width}`);
  });

  test("that is left out is called so, until another one is opened", async () => {
    const page = await open(example, { fragment: "#system-6" });
    const leftOut = await page.locator("#systems-left-out").textContent();
    assert.match(leftOut, /like the first one of layout A/);
    assert.match(await page.locator("#system-note").textContent(), /^System 6 has no picture here: it is like the first one of layout A\./);
    await page.evaluate(() => { location.hash = "#system-2"; });
    await page.locator("#system-2[open] svg").waitFor();
    assert.equal(await page.locator("#system-note").textContent(), "");
    assert.equal(await page.locator("#systems-left-out").textContent(), leftOut);
  });
});

describe("proposals", () => {
  test("can be saved as soon as one is ticked", async () => {
    const page = await open(broken);
    const save = page.locator("#save-corrections");
    await page.locator("#tick-none").click();
    assert.equal(await save.isDisabled(), true);
    await page.locator("input[data-proposal]").first().check();
    assert.equal(await save.isDisabled(), false);
  });
});

describe("a layout", () => {
  test("has the same words at its systems as in its table", async () => {
    const page = await open(example);
    const rows = await page.locator("#layouts tbody tr").evaluateAll((all) => all.map((row) => [...row.cells].map((cell) => cell.textContent)));
    const headings = await page.locator("details.system .amount").allTextContents();
    assert.ok(rows.length > 2);
    for (const [label, , , words] of rows.slice(1)) {
      const expected = `layout ${label}: ${words.replace("As A", "as A")}`;
      assert.ok(headings.some((heading) => heading.includes(expected)), `${expected} in ${headings}`);
    }
  });
});

describe("a line of an instrument", () => {
  test("says in how many systems of a pixel it is present", async () => {
    const page = await open(reportOf(largeGroup("very-long", { pages: 200, systems: 3, instruments: 6 }), 0));
    const heights = await page.locator(".presence canvas").evaluateAll((all) => all.flatMap((canvas) => {
      const { data, width } = canvas.getContext("2d").getImageData(0, 0, canvas.width, 10);
      return [...Array(width).keys()].map((x) => [...Array(10).keys()].filter((y) => data[4 * (y * width + x) + 3] > 200).length);
    }));
    assert.ok(heights.some((height) => height > 0 && height < 8), `${heights}`);
  });
});

describe("a long list of places", () => {
  test("has its numbers beside the text of the column before", async () => {
    const page = await open(long);
    const gap = await page.locator(".many").first().evaluate((list) => Number.parseFloat(getComputedStyle(list).columnGap));
    assert.ok(gap >= 48, `${gap}`);
  });
});

describe("without script", () => {
  test("proposals beside a damaged page are saved by a command, too", async () => {
    const path = folder("scriptless-damaged");
    for (let number = 1; number <= 4; ++number) {
      build(`${path}/LIED00${number}.MUS`, pageText([{ id: 101 }, { id: number === 4 ? 0 : 102 }]));
    }
    writeFileSync(`${path}/LIED005.MUS`, readFileSync(`${path}/LIED001.MUS`).subarray(0, 90));
    const page = await open(reportOf(path, 1), { javaScriptEnabled: false });
    const command = await page.locator("#next noscript code").textContent();
    run(path, ...command.replace("*", "").split(" ").slice(1).flatMap((word) => (word.endsWith(".MUS") && command.includes("*") ? pagesIn(path) : [word])));
    assert.match(readFileSync(`${path}/corrections.csv`, "utf8"), /LIED004/);
  });

  test("links to systems lead to a line about them", async () => {
    const page = await open(broken, { javaScriptEnabled: false });
    const line = page.locator("#system-7");
    assert.match(await line.textContent(), /^System 7, page KANTATE007\.MUS, layout [A-Z]$/);
    await page.locator("#problems details").nth(1).evaluate((element) => { element.open = true; });
    const hrefs = await page.locator("#problems a[href^='#system-']").evaluateAll((links) => links.map((link) => link.getAttribute("href").slice(1)));
    for (const id of hrefs) {
      assert.equal(await page.locator(`[id="${id}"]`).count(), 1, id);
    }
  });

  test("boxes that cannot be saved cannot be ticked, and a command does it", async () => {
    const path = folder("scriptless");
    for (let number = 1; number <= 4; ++number) {
      build(`${path}/LIED00${number}.MUS`, pageText([{ id: 101 }, { id: number === 4 ? 0 : 102 }]));
    }
    const file = reportOf(path, 0);
    const page = await open(file, { javaScriptEnabled: false });
    assert.equal(await page.locator("input[data-proposal]").first().isDisabled(), true);
    const command = await page.locator("#next noscript code").textContent();
    assert.equal(command, "kivsys suggest -o corrections.csv LIED001.MUS LIED002.MUS LIED003.MUS LIED004.MUS");
    const { status, error } = run(path, ...command.split(" ").slice(1));
    assert.equal(status, 0, error);
    assert.match(readFileSync(`${path}/corrections.csv`, "utf8"), /LIED004/);
    const scripted = await open(file);
    assert.equal(await scripted.locator("input[data-proposal]").first().isDisabled(), false);
  });
});

describe("on paper", () => {
  async function printed(file, options = {}) {
    const page = await open(file, options);
    await page.emulateMedia({ media: "print" });
    await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
    return page;
  }

  test("systems that need attention have their pictures", async () => {
    const page = await printed(example);
    for (const system of [1, 2, 3]) {
      assert.ok(await page.locator(`#system-${system} svg`).isVisible(), `system ${system}`);
    }
    await page.evaluate(() => window.dispatchEvent(new Event("afterprint")));
    assert.equal(await page.locator("details.system[open]").count(), 0);
  });

  test("the number of pictures that are left out is said", async () => {
    const page = await printed(reportOf(largeGroup("many-differ", { pages: 30, systems: 1, instruments: 8 }), 0));
    assert.match(await page.locator(".print-only").textContent(), /^Not printed: \d+ pictures of systems that differ, or have problems or warnings\./);
  });

  test("systems on other parts of the list have their pictures, too", async () => {
    const page = await open(long);
    await page.locator("#systems-forward").click();
    await page.emulateMedia({ media: "print" });
    await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
    assert.ok(await page.locator("#system-2 svg").isVisible());
    assert.equal(await page.locator("details.system[open]").count(), 20);
    await page.evaluate(() => window.dispatchEvent(new Event("afterprint")));
    assert.equal(await page.locator("details.system[open]").count(), 0);
    assert.match(await page.locator("#system-range").textContent(), /^41 to /);
    assert.equal(await page.locator("#system-2").count(), 0);
    assert.equal(await page.locator("#system-41").count(), 1);
  });

  test("a system with nothing but a warning has its picture", async () => {
    const page = await printed(warned);
    assert.ok(await page.locator("#system-2 svg").first().isVisible());
  });

  test("a map with many instruments is on several sheets, each with names and heads", async () => {
    const page = await printed(tall);
    const heights = await page.locator(".print-map > canvas").evaluateAll((all) => all.map((canvas) => canvas.getBoundingClientRect().height));
    assert.equal(heights.length, 2);
    assert.ok(Math.max(...heights) <= 900, `${heights}`);
  });

  test("the legend stays on its line", async () => {
    const page = await printed(example);
    const display = await page.locator(".print-map .legend canvas").first().evaluate((canvas) => getComputedStyle(canvas).display);
    assert.equal(display, "inline");
  });

  test("lines of instruments have the colors of paper in a dark scheme, too", async () => {
    const page = await printed(example, { colorScheme: "dark" });
    const color = await page.locator(".presence canvas").first().evaluate((canvas) => [...canvas.getContext("2d").getImageData(4, 5, 1, 1).data]);
    assert.deepEqual(color, [0x2b, 0x6f, 0x6a, 255]);
  });
});
