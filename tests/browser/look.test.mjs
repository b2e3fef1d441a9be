// How pages look and can be used: schemes, widths, print, keyboard, screen readers. The pictures are for people.
import assert from "node:assert/strict";
import { mkdirSync, statSync } from "node:fs";
import { after, afterEach, before, describe, test } from "node:test";

import { axeViolations, closePages, open, openAtSystem, openFirstSystem, overflow, startBrowser, stopBrowser } from "./browser.mjs";
import { brokenGroup, exampleGroup, largeGroup, reportOf, run, work } from "./groups.mjs";

const files = {};
const widths = [360, 1280, 3840];
const pictures = `${work}/pictures`;

before(async () => {
  await startBrowser();
  mkdirSync(pictures, { recursive: true });
  files.broken = reportOf(brokenGroup("look-broken"), 1);
  const path = exampleGroup("look-example");
  assert.equal(run(path, "convert", ".", "--result", "out/WORK0001.MUS").status, 0);
  files.converted = reportOf(path, 0, "--result", "out/WORK0001.MUS");
  files.many = reportOf(largeGroup("look-many", { pages: 30, systems: 3, instruments: 30 }), 0);
});
afterEach(closePages);
after(stopBrowser);

/** Opens everything that a reader would look at. */
async function openPart(page) {
  await openFirstSystem(page);
  await page.locator("details.problem").evaluateAll((all) => all.forEach((entry) => { entry.open = true; }));
}

for (const name of ["broken", "converted", "many"]) {
  describe(name, () => {
    for (const colorScheme of ["light", "dark"]) {
      test(`axe finds nothing, ${colorScheme}`, async () => {
        const page = await open(files[name], { colorScheme });
        await openPart(page);
        assert.deepEqual(await axeViolations(page), []);
      });

      for (const width of widths) {
        test(`fits ${width} pixels, ${colorScheme}`, async () => {
          const page = await open(files[name], { colorScheme, viewport: { width, height: 900 } });
          await openPart(page);
          assert.equal(await overflow(page), 0);
          await page.screenshot({ path: `${pictures}/${name}-${width}-${colorScheme}.png`, fullPage: true });
        });
      }
    }

    test("prints on A4 and Letter", async () => {
      const page = await open(files[name]);
      await openPart(page);
      for (const format of ["A4", "Letter"]) {
        const path = `${pictures}/${name}-${format}.pdf`;
        await page.pdf({ path, format });
        assert.ok(statSync(path).size > 20000);
      }
    });
  });
}

describe("schemes", () => {
  test("dark and light differ, and forced colors are the system's", async () => {
    const background = (page) => page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor);
    const colors = [];
    for (const options of [{ colorScheme: "light" }, { colorScheme: "dark" }, { forcedColors: "active" }]) {
      const page = await open(files.broken, options);
      colors.push(await background(page));
      if (options.forcedColors) {
        await openPart(page);
        await page.screenshot({ path: `${pictures}/broken-forced.png`, fullPage: true });
        assert.deepEqual(page.faults, []);
      }
    }
    assert.equal(new Set(colors.slice(0, 2)).size, 2);
    assert.equal(colors[2], "rgb(255, 255, 255)");
  });
});

describe("print", () => {
  test("has the whole map and all places, and nothing to press", async () => {
    const page = await open(files.many);
    await page.emulateMedia({ media: "print" });
    await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
    assert.equal(await page.locator(".print-map > canvas").count(), 3);
    assert.ok(await page.locator(".print-map .legend li").first().isVisible());
    assert.ok(await page.locator("#layouts table").isVisible());
    assert.ok(!(await page.locator("#map-canvas").isVisible()));
    assert.equal(await page.locator("button:visible").count(), 0);
    await page.evaluate(() => dispatchEvent(new Event("afterprint")));
    assert.equal(await page.locator(".print-map canvas").count(), 0);
  });

  test("is light in a dark scheme, too", async () => {
    const page = await open(files.many, { colorScheme: "dark" });
    await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
    const corner = await page.locator(".print-map canvas").first().evaluate((canvas) => [...canvas.getContext("2d").getImageData(1, 1, 1, 1).data]);
    assert.deepEqual(corner, [255, 255, 255, 255]);
  });

  test("does not cut pictures of systems", async () => {
    const page = await open(files.converted);
    await page.emulateMedia({ media: "print" });
    assert.equal(await page.locator("figure").count(), 0);
    assert.ok(!(await page.locator("#systems").isVisible()), "a heading over nothing");
    await openPart(page);
    assert.equal(await page.locator("figure").first().evaluate((figure) => getComputedStyle(figure).breakInside), "avoid");
  });
});

describe("keyboard", () => {
  test("reaches everything that can be used, and shows where it is", async () => {
    const page = await open(files.broken);
    const expected = await page.evaluate(() =>
      [...document.querySelectorAll("a[href], button, input, select, summary, [tabindex='0']")]
        .filter((element) => element.checkVisibility() && !element.disabled).length);
    const seen = new Set();
    for (let press = 0; press < expected + 5; ++press) {
      await page.keyboard.press("Tab");
      const at = await page.evaluate(() => {
        const all = [...document.querySelectorAll("*")];
        const element = document.activeElement;
        const style = getComputedStyle(element);
        return { index: all.indexOf(element), tag: element.tagName, outline: style.outlineStyle !== "none" && parseFloat(style.outlineWidth) >= 1 };
      });
      if (at.tag !== "BODY") {
        assert.ok(at.outline, `${at.tag} shows no focus`);
        seen.add(at.index);
      }
    }
    assert.ok(seen.size >= expected, `${seen.size} of ${expected}`);
  });

  test("skips to the content first", async () => {
    const page = await open(files.broken);
    await page.keyboard.press("Tab");
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.activeElement.id), "content");
  });
});

describe("screen reader", () => {
  test("gets headings in order, names of tables and pictures", async () => {
    const page = await openAtSystem(files.converted, 2);
    const headings = await page.locator("h1, h2").allTextContents();
    assert.deepEqual(headings, ["SYMPH", "The pages have been converted", "Next step", "Layout map", "Problems", "Proposals", "Systems", "Instruments"]);
    const labels = await page.locator("svg[role='img']").evaluateAll((all) => all.map((svg) => svg.getAttribute("aria-label")));
    assert.deepEqual(labels, ["Before of system 2, 6 staves", "After of system 2, 12 staves"]);
  });
});
