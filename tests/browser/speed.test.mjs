// How long it takes, with large groups.
import assert from "node:assert/strict";
import { statSync } from "node:fs";
import { after, afterEach, before, test } from "node:test";

import { closePages, open, startBrowser, stopBrowser } from "./browser.mjs";
import { largeGroup, reportOf } from "./groups.mjs";

const seconds = (since) => (performance.now() - since) / 1000;

/** When something of the page was seen first, in ms. A page that loads fast has loaded before that. */
function firstPaint(page) {
  return page.evaluate(() => new Promise((done) => {
    setTimeout(() => { done(Infinity); }, 10000);
    new PerformanceObserver((list) => {
      const paint = list.getEntriesByName("first-contentful-paint")[0];
      if (paint) {
        done(paint.startTime);
      }
    }).observe({ type: "paint", buffered: true });
  }));
}

let pages500 = "";
let systems3000 = "";

before(async () => {
  await startBrowser();
  pages500 = largeGroup("pages500", { pages: 500, systems: 2, instruments: 24 });
  systems3000 = largeGroup("systems3000", { pages: 1000, systems: 3, instruments: 40 });
});
afterEach(closePages);
after(stopBrowser);

test("a report of 500 pages takes less than 2 seconds and 3 MB", () => {
  const start = performance.now();
  const report = reportOf(pages500, 0);
  const taken = seconds(start);
  const megabytes = statSync(report).size / 1e6;
  console.log(`500 pages: ${taken.toFixed(2)} s, ${megabytes.toFixed(2)} MB`);
  assert.ok(taken < 2, `${taken} s`);
  assert.ok(megabytes < 3, `${megabytes} MB`);
});

test("3,000 systems are shown in less than a second, and scroll smoothly", async () => {
  const report = reportOf(systems3000, 0);
  const start = performance.now();
  const page = await open(report);
  const loaded = seconds(start);
  const shown = await firstPaint(page);
  const longest = await page.evaluate(async () => {
    let most = 0;
    new PerformanceObserver((list) => {
      for (const entry of list.getEntries()) {
        most = Math.max(most, entry.duration);
      }
    }).observe({ type: "longtask", buffered: false });
    const frame = document.querySelector(".map-frame");
    for (let step = 0; step < 60; ++step) {
      frame.scrollLeft += frame.scrollWidth / 60;
      frame.scrollTop = step % 2 ? 400 : 0;
      await new Promise((done) => { requestAnimationFrame(done); });
    }
    await new Promise((done) => { setTimeout(done, 100); });
    return most;
  });
  console.log(`3,000 systems: first view ${(shown / 1000).toFixed(2)} s, loaded ${loaded.toFixed(2)} s, ` +
    `${(statSync(report).size / 1e6).toFixed(2)} MB, longest task while scrolling ${longest} ms`);
  assert.ok(shown < 1000, `${shown} ms`);
  assert.ok(longest <= 100, `${longest} ms`);
});
