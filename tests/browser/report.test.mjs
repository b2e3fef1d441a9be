// What a report shows and does, in a real browser.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, afterEach, before, describe, test } from "node:test";

import { FileSystemConfigLoader, HtmlValidate } from "html-validate";

import { closePages, open, openAtSystem, openFirstSystem, startBrowser, stopBrowser, until } from "./browser.mjs";
import { brokenGroup, exampleGroup, hostile, longName, reportOf, run, usableGroup } from "./groups.mjs";

let example = "";
let broken = "";
let usable = "";
let converted = "";

before(async () => {
  await startBrowser();
  example = reportOf(exampleGroup(), 0);
  broken = reportOf(brokenGroup(), 1);
  usable = reportOf(usableGroup(), 0);
  const path = exampleGroup("converted");
  assert.equal(run(path, "convert", "SYMPH001.MUS", "SYMPH002.MUS", "SYMPH003A.MUS", "SYMPH003B.MUS", "SYMPH004.MUS", "SYMPH005.MUS", "--result", "out/WORK0001.MUS").status, 0);
  converted = reportOf(path, 0, "--result", "out/WORK0001.MUS");
});
afterEach(closePages);
after(stopBrowser);

describe("one file", () => {
  for (const [name, file] of Object.entries({ example: () => example, broken: () => broken, usable: () => usable, converted: () => converted })) {
    test(`${name}: is valid HTML`, async () => {
      const validator = new HtmlValidate(new FileSystemConfigLoader());
      const html = readFileSync(file(), "utf8");
      const { results } = await validator.validateString(html, new URL("page.html", import.meta.url).pathname);
      assert.deepEqual(results.flatMap((result) => result.messages.map((message) => `${message.line}: ${message.message}`)), []);
    });

    test(`${name}: asks for nothing, and nothing fails`, async () => {
      const page = await open(file());
      await openFirstSystem(page);
      assert.deepEqual(page.faults, []);
    });
  }

  test("its policy keeps other scripts, styles and requests out", async () => {
    const page = await open(example);
    await page.evaluate(() => {
      const script = document.createElement("script");
      script.textContent = "window.other = 1";
      document.body.append(script);
      const image = document.createElement("img");
      image.src = "http://127.0.0.1:9/x.png";
      document.body.append(image);
      document.body.setAttribute("style", "display: none");
    });
    await until(() => page.faults.filter((fault) => /Content Security Policy/.test(fault)).length === 3);
    assert.equal(await page.evaluate(() => window.other), undefined);
    assert.ok(await page.locator("body").isVisible());
  });

  test("hostile texts of pages run nothing", async () => {
    const page = await open(broken);
    for (const entry of await page.locator("details.system > summary").all()) {
      await entry.click();
      await entry.locator("xpath=..").locator("svg").first().waitFor();
    }
    assert.equal(await page.evaluate(() => window.hacked), undefined);
    assert.equal(await page.locator("main img").count(), 0);
    assert.deepEqual(page.faults, []);
    assert.ok((await page.locator("#instruments").textContent()).includes(hostile));
  });

  test("it can be read without its script", async () => {
    const page = await open(broken, { javaScriptEnabled: false });
    const text = await page.locator("main").innerText();
    for (const part of ["1 page cannot be read", "kivsys recover KANTATE010.MUS", "Staff without an instrument id", "Why it matters", longName]) {
      assert.ok(text.includes(part), part);
    }
    assert.equal(await page.locator("#problems a[href='#system-7']").first().textContent(), "System 7");
  });
});

describe("top", () => {
  test("has the verdict, the counts and one next step", async () => {
    const page = await open(example);
    assert.equal(await page.locator("#verdict h2").textContent(), "The pages need a conversion");
    assert.equal((await page.locator(".counts").innerText()).replaceAll("\n", " "), "Pages 5 Systems 7 Instruments 12 Files 6 Systems that differ 3");
    assert.equal(await page.locator("#next-command").count(), 1);
    assert.equal(await page.locator(".other-steps li").count(), 2);
  });

  test("copies the command", async () => {
    const page = await open(example, { permissions: ["clipboard-read", "clipboard-write"] });
    await page.locator("#copy-command").click();
    await page.getByText("Copied").waitFor();
    assert.equal(await page.evaluate(() => navigator.clipboard.readText()), "kivsys convert --result converted/WORK0001.MUS SYMPH*.MUS");
  });

  test("has nothing to run when nothing has to be done", async () => {
    const page = await open(usable);
    assert.equal(await page.locator("#verdict h2").textContent(), "The pages can be used as they are");
    assert.equal(await page.locator("#next-command").count(), 0);
  });
});

describe("layout map", () => {
  test("says what is under the pointer", async () => {
    const page = await open(example);
    const box = await page.locator("#map-canvas").boundingBox();
    const { label, cell, head } = { label: box.width - 7 * 28 - 8, cell: 28, head: box.height - 12 * 28 - 8 };
    await page.mouse.move(box.x + label + cell * 1.5, box.y + head + cell / 2);
    assert.equal(await page.locator("#map-status").textContent(), "101: missing, gets a rest staff. System 2, page SYMPH002.MUS, layout C.");
  });

  test("is used by keyboard", async () => {
    const page = await open(example);
    await page.locator("#map-canvas").focus();
    assert.match(await page.locator("#map-status").textContent(), /^101: one staff\. System 1, page SYMPH001\.MUS, layout B\.$/);
    for (const key of ["ArrowRight", "ArrowDown", "End", "n", "Home", "n"]) {
      await page.keyboard.press(key);
    }
    assert.match(await page.locator("#map-status").textContent(), /^102: missing, gets a rest staff\. System 2,/);
    await page.keyboard.press("Enter");
    await page.locator("#system-2[open] svg").waitFor();
    assert.equal(await page.evaluate(() => document.activeElement.parentElement.id), "system-2");
  });

  test("opens the system that is clicked", async () => {
    const page = await open(example);
    const { width, height } = await page.locator("#map-canvas").boundingBox();
    await page.locator("#map-canvas").click({ position: { x: width - 8 - 28 * 4.5, y: height - 20 } });
    await page.locator("#system-3[open] svg").waitFor();
  });

  test("says so when a system has no picture", async () => {
    const page = await open(example, { fragment: "#system-6" });
    assert.match(await page.locator("#system-note").textContent(), /^System 6 has no picture here: it is like the first one of layout A\./);
  });

  test("says how it is used, and names pages by their ends", async () => {
    const page = await open(example);
    assert.match(await page.locator("#map-status").textContent(), /^Point at a cell/);
    const [start, end] = await page.evaluate(() => {
      const context = document.createElement("canvas").getContext("2d");
      const fitting = (keepsEnd) => window.fittingText(context, "A very long name 007.MUS", 80, keepsEnd);
      return [fitting(false), fitting(true)];
    });
    assert.match(start, /^A very.*…$/);
    assert.match(end, /^….*007\.MUS$/);
  });

  test("can be restricted to the systems that differ", async () => {
    const page = await open(example);
    await page.locator("#map-filter").check();
    assert.equal(await page.locator("#map-status").textContent(), "3 systems in the map");
    await page.locator("#map-canvas").focus();
    await page.keyboard.press("End");
    assert.match(await page.locator("#map-status").textContent(), /System 3,/);
  });
});

describe("problems", () => {
  test("are explained, and each place leads to its picture", async () => {
    const page = await open(broken);
    const problem = page.locator("details.problem").filter({ hasText: "Staff without an instrument id" });
    await problem.locator("summary").click();
    assert.deepEqual(await problem.locator("dt").allTextContents(), ["What it means", "Why it matters", "What to do"]);
    assert.equal(await problem.locator("li").first().textContent(), "System 7, KANTATE007.MUS, staff 2, item 9");
    await problem.locator("a").first().click();
    const system = page.locator("#system-7[open]");
    await system.locator("svg").waitFor();
    assert.equal(await system.locator("svg .says").first().textContent(), "Staff without an instrument id");
    assert.equal(await system.locator("rect.faulty").count(), 1);
    await problem.evaluate((element) => { element.open = false; });
    await system.locator("a[href^='#problem-']").first().click();
    await problem.locator("dl").waitFor();
  });

  test("mark the item that they are about", async () => {
    const page = await openAtSystem(broken, 9);
    assert.equal(await page.locator("#system-9 ellipse.mark").count(), 1);
  });
});

describe("systems", () => {
  test("are drawn as their pages are", async () => {
    const page = await openAtSystem(example, 1);
    const svg = page.locator("#system-1 svg");
    assert.equal(await svg.locator("text.id").count(), 12);
    assert.equal(await svg.locator("path.thin").count() > 60, true);
    assert.equal(await svg.locator("use[href='#glyph-0']").count(), 7);
    assert.equal(await svg.locator("text", { hasText: "Molto vivace" }).count(), 1);
  });

  test("are shown before and after a conversion, rest staves tinted", async () => {
    const page = await openAtSystem(converted, 2);
    const figures = page.locator("#system-2 figure");
    assert.deepEqual(await figures.locator("figcaption").allTextContents(), ["Before", "After, 6 rest staves inserted (tinted)"]);
    assert.equal(await figures.nth(0).locator("rect.inserted").count(), 0);
    assert.equal(await figures.nth(1).locator("rect.inserted").count(), 6);
    const boxes = await figures.evaluateAll((all) => all.map((figure) => figure.getBoundingClientRect().top));
    assert.equal(boxes[0], boxes[1], "beside each other");
  });

  test("have warnings at the bars of the results", async () => {
    const page = await open(converted);
    const problem = page.locator("details.problem.warning").filter({ hasText: "Key or time of a rest staff" });
    assert.equal(await problem.locator("li").first().textContent(),
      "System 4, WORK0004.MUS, bar 1: rest staves 101, 102, 103, 104, 108, 109, 110: the key is not that of the system");
    await problem.locator("a").first().click();
    const figures = page.locator("#system-4 figure");
    await figures.nth(1).waitFor();
    assert.equal(await figures.nth(0).locator("rect.mark").count(), 0);
    assert.ok(await figures.nth(1).locator("rect.mark").count() > 0);
    const [mark, staff] = await figures.nth(1).evaluate((figure) =>
      [figure.querySelector("rect.mark"), figure.querySelector("rect.inserted")].map((element) => ({ x: element.getBBox().x, width: element.getBBox().width })));
    assert.ok(mark.x >= staff.x && mark.x + mark.width <= staff.x + staff.width, "in a bar");
    assert.match(await page.locator("#verdict").textContent(), /4 warnings are listed under Problems/);
    assert.match(await page.locator("#system-4 .amount").first().textContent(), /layout A, 1 kind of warning$/);
    await page.locator("#map-filter").check();
    assert.equal(await page.locator("#map-status").textContent(), "3 systems in the map", "warnings are no deviations");
  });
});

describe("list of systems", () => {
  test("scroll together when they are compared", async () => {
    const page = await openAtSystem(converted, 2);
    const sheets = page.locator("#system-2 .sheet");
    await sheets.nth(0).evaluate((sheet) => { sheet.scrollLeft = 60; });
    await page.waitForFunction(() => document.querySelectorAll("#system-2 .sheet")[1].scrollLeft === 60);
    await sheets.nth(1).evaluate((sheet) => { sheet.scrollLeft = 20; });
    await page.waitForFunction(() => document.querySelectorAll("#system-2 .sheet")[0].scrollLeft === 20);
  });

  test("can be opened all at once, as for printing", async () => {
    const page = await open(example);
    await page.locator("#systems-open").click();
    await page.locator("#system-4 svg").waitFor();
    assert.equal(await page.locator("#systems-shown svg[role='img']").count(), 4);
  });

  test("can be restricted to those with problems or proposals", async () => {
    const page = await open(broken);
    await page.locator("#system-filter").selectOption("proposals");
    assert.deepEqual(await page.locator("#systems-shown details").evaluateAll((all) => all.map((entry) => entry.id)), ["system-7", "system-8", "system-9"]);
  });
});

describe("proposals", () => {
  async function saved(page) {
    const download = page.waitForEvent("download");
    await page.locator("#save-corrections").click();
    const file = await download;
    assert.equal(file.suggestedFilename(), "corrections.csv");
    return readFileSync(await file.path(), "utf8");
  }

  test("are saved as suggest writes them, and fix takes them", async () => {
    const path = broken.replace("/report.html", "");
    const readable = ["1", "2", "3", "4", "5", "6", "7", "8", "9"].map((number) => `KANTATE00${number}.MUS`);
    const page = await open(broken);
    await page.locator("#tick-all").click();
    const table = await saved(page);
    assert.equal(table, run(path, "suggest", "-o", "-", ...readable).out);
    await page.locator("#tick-none").click();
    assert.equal(await page.locator("#save-corrections").isDisabled(), true);
    assert.match(await page.locator("#proposal-count").textContent(), /^0 of 3 ticked$/);
  });

  test("have boxes at their pictures, which follow those of the table", async () => {
    const page = await openAtSystem(broken, 7);
    await page.locator("#tick-none").click();
    await page.locator("#system-7 input[data-proposal]").check();
    assert.match(await page.locator("#proposal-count").textContent(), /^1 of 3 ticked$/);
    assert.equal((await saved(page)).trim().split("\n").length, 2);
    assert.equal(await page.locator("#system-7 text.proposed").textContent(), "0 → 110");
    assert.equal(await page.locator("#system-7 rect.doubtful").count(), 1);
  });
});

describe("instruments", () => {
  test("have a line of their systems beside the words", async () => {
    const page = await open(example);
    const row = page.locator("#instruments tbody tr").first();
    assert.deepEqual((await row.locator("th, td").allTextContents()).map((cell) => cell.trim()), ["101", "(no name)", "treble", "2 of 7: 1, 3", "system 1, SYMPH001.MUS, staff 12", "system 3, SYMPH003A.MUS, staff 7"]);
    const inks = await page.locator(".presence canvas").first().evaluate((canvas) => {
      const { width, height } = canvas;
      const pixel = (part) => [...canvas.getContext("2d").getImageData(Math.floor(width * part), Math.floor(height / 2), 1, 1).data][3];
      return [pixel(0.05), pixel(0.2), pixel(0.35), pixel(0.6)];
    });
    assert.deepEqual(inks, [255, 0, 255, 0]);
  });
});
