import js from "@eslint/js";

const browser = [
  "Blob", "IntersectionObserver", "URL", "ResizeObserver", "addEventListener", "devicePixelRatio", "document", "getComputedStyle",
  "getSelection", "history", "innerHeight", "location", "matchMedia", "navigator", "requestAnimationFrame",
  "setTimeout",
];
const node = ["console", "process", "performance", "URL", "setTimeout", "Buffer"];
const names = (list) => Object.fromEntries(list.map((name) => [name, "readonly"]));

const rules = {
  ...js.configs.recommended.rules,
  curly: "error",
  eqeqeq: "error",
  "max-lines": ["error", 300],
  "max-lines-per-function": ["error", 40],
  "max-params": ["error", 6],
  "no-eval": "error",
  "no-implied-eval": "error",
  "no-var": "error",
  "prefer-const": "error",
  "no-restricted-properties": ["error", { property: "innerHTML" }, { property: "outerHTML" }, { property: "insertAdjacentHTML" }],
};

export default [
  { ignores: ["node_modules/**"] },
  { files: ["**/*.js", "**/*.mjs"], languageOptions: { globals: names([...node, ...browser]) }, rules },
  {
    // A function that groups tests is longer than one that does something. Some of their code runs in a page.
    files: ["**/*.test.mjs", "**/browser.mjs"],
    languageOptions: { globals: names([...node, ...browser, "window", "Event", "dispatchEvent", "PerformanceObserver"]) },
    rules: { ...rules, "max-lines-per-function": ["error", 60] },
  },
  {
    // One file of a script that consists of several.
    files: ["**/page/*.js"],
    languageOptions: { sourceType: "script", globals: names(browser) },
    rules: { ...rules, "no-undef": "off", "no-unused-vars": ["error", { vars: "local" }] },
  },
  {
    // The whole script of a page.
    files: ["**/page/whole/*.js"],
    languageOptions: { sourceType: "script", globals: names(browser) },
    rules: { ...rules, "max-lines": "off", "no-undef": "error", "no-unused-vars": "error" },
  },
];
