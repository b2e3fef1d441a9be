// The page of a library, in a real browser.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { after, afterEach, before, test } from "node:test";

import { FileSystemConfigLoader, HtmlValidate } from "html-validate";

import { axeViolations, closePages, open, overflow, startBrowser, stopBrowser } from "./browser.mjs";
import { build, folder, hostile, longName, page as pageText, run, work } from "./groups.mjs";

let survey = "";

before(async () => {
  await startBrowser();
  const path = folder("library");
  for (const [name, systems] of Object.entries({ Adagio: [[101, 102], [101, 102]], Ballade: [[101, 102], [101]], Chor: [[0, 102], [101, 102]] })) {
    mkdirSync(`${path}/music/${name}`, { recursive: true });
    systems.forEach((ids, index) => build(`${path}/music/${name}/${name.toUpperCase()}${index + 1}.MUS`, pageText(ids.map((id) => ({ id, name: id === 101 ? hostile : longName })))));
  }
  writeFileSync(`${path}/music/DAMAGED1.MUS`, "no page");
  const { status, error } = run(path, "survey", "music", "--html", "library.html", "--reports", "reports");
  assert.equal(status, 0, error);
  survey = `${path}/library.html`;
});
afterEach(closePages);
after(stopBrowser);

const pieces = (page) => page.locator("#pieces tbody tr:visible th").allTextContents();

test("is valid HTML, asks for nothing, and axe finds nothing", async () => {
  const validator = new HtmlValidate(new FileSystemConfigLoader());
  const { results } = await validator.validateString(readFileSync(survey, "utf8"), new URL("page.html", import.meta.url).pathname);
  assert.deepEqual(results.flatMap((result) => result.messages.map((message) => message.message)), []);
  for (const colorScheme of ["light", "dark"]) {
    const page = await open(survey, { colorScheme });
    assert.deepEqual(await axeViolations(page), []);
    assert.deepEqual(page.faults, []);
  }
});

test("is sorted by the columns", async () => {
  const page = await open(survey);
  assert.deepEqual(await pieces(page), ["DAMAGED", "ADAGIO", "BALLADE", "CHOR"]);
  const head = page.locator("#pieces th", { hasText: "Piece" });
  await head.locator("button").click();
  assert.deepEqual(await pieces(page), ["ADAGIO", "BALLADE", "CHOR", "DAMAGED"]);
  assert.equal(await head.getAttribute("aria-sort"), "ascending");
  await head.locator("button").click();
  assert.deepEqual(await pieces(page), ["DAMAGED", "CHOR", "BALLADE", "ADAGIO"]);
  await page.locator("#pieces th", { hasText: "Systems" }).locator("button").press("Enter");
  assert.equal((await pieces(page)).at(0), "DAMAGED", "what is not known comes first");
});

test("sorts names that begin with a number as words", async () => {
  const page = await open(survey);
  const keys = await page.evaluate(() => {
    const row = (text) => ({ children: [{ textContent: text }] });
    return ["2024 Zed", "2024 Alpha", "12"].map((text) => window.sortKey(row(text), 0));
  });
  assert.deepEqual(keys, ["2024 zed", "2024 alpha", 12]);
});

test("is filtered by words and verdict", async () => {
  const page = await open(survey);
  await page.locator("#survey-find").fill("ball");
  assert.deepEqual(await pieces(page), ["BALLADE"]);
  assert.equal(await page.locator("#survey-count").textContent(), "1 of 4 pieces");
  await page.locator("#survey-find").fill("");
  await page.locator("#survey-verdict").selectOption("has-problems");
  assert.deepEqual(await pieces(page), ["CHOR"]);
});

test("has a small map of each piece", async () => {
  const page = await open(survey);
  await page.locator(".small-map canvas").first().waitFor();
  assert.deepEqual(await page.locator(".small-map canvas").evaluateAll((all) => all.map((canvas) => canvas.getAttribute("aria-label"))),
    ["100 percent of the staves are there", "75 percent of the staves are there", "67 percent of the staves are there"]);
});

test("leads to the reports", async () => {
  const page = await open(survey);
  await page.getByRole("link", { name: "BALLADE" }).click();
  await page.locator("#verdict").waitFor();
  assert.equal(await page.locator("#verdict h2").textContent(), "The pages need a conversion");
});

test("fits narrow windows, and can be read without its script", async () => {
  for (const width of [360, 1280, 3840]) {
    const page = await open(survey, { viewport: { width, height: 900 } });
    assert.equal(await overflow(page), 0);
    mkdirSync(`${work}/pictures`, { recursive: true });
    await page.screenshot({ path: `${work}/pictures/survey-${width}.png`, fullPage: true });
  }
  const page = await open(survey, { javaScriptEnabled: false });
  assert.deepEqual(await pieces(page), ["DAMAGED", "ADAGIO", "BALLADE", "CHOR"]);
});
