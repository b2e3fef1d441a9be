// The browser, and what tests ask of every page.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";

import { chromium } from "playwright-core";

const axeSource = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
let browser = null;

export async function startBrowser() {
  browser ??= await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox"] });
}

export async function stopBrowser() {
  await browser?.close();
  browser = null;
}

/** Closes all pages. */
export async function closePages() {
  await Promise.all(browser.contexts().map((context) => context.close()));
}

/** Opens a file. What the page did that it must not do is in its faults: errors, dialogs, requests. */
export async function open(file, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
  const page = await context.newPage();
  page.faults = [];
  page.on("console", (message) => ["error", "warning"].includes(message.type()) && page.faults.push(message.text()));
  page.on("pageerror", (error) => page.faults.push(error.message));
  page.on("dialog", (dialog) => {
    page.faults.push(`dialog: ${dialog.message()}`);
    dialog.dismiss();
  });
  const url = `file://${file}`;
  page.on("request", (request) => {
    const isOwn = request.url().split("#")[0] === url || request.url().startsWith("blob:");
    if (!isOwn) {
      page.faults.push(`request: ${request.url()}`);
    }
  });
  await page.goto(url + (options.fragment ?? ""));
  return page;
}

/** Waits until a function of Node's gives true. */
export async function until(isTrue) {
  const end = Date.now() + 10000;
  while (!(await isTrue())) {
    assert.ok(Date.now() < end, `still not true: ${isTrue}`);
    await new Promise((done) => { setTimeout(done, 10); });
  }
}

/** Opens a report at the picture of a system, and waits until it is drawn. */
export async function openAtSystem(file, system) {
  const page = await open(file, { fragment: `#system-${system}` });
  await page.locator(`#system-${system}[open] svg`).first().waitFor();
  return page;
}

/** Opens the first system of the list and waits until it is drawn. */
export async function openFirstSystem(page) {
  const system = page.locator("#systems-shown > details").first();
  await system.evaluate((entry) => { entry.open = true; });
  await system.locator("svg").first().waitFor();
}

/** The violations that axe finds, each with the elements. */
export async function axeViolations(page) {
  await page.evaluate(axeSource);
  const violations = await page.evaluate(async () => (await window.axe.run()).violations);
  return violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html.slice(0, 120)).join(" | ")}`);
}

/** How many pixels the page is wider than its window. */
export function overflow(page) {
  return page.evaluate(() => document.documentElement.scrollWidth - document.documentElement.clientWidth);
}
