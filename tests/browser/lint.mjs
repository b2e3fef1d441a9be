// Checks the templates of pages and the scripts of these tests. Prints what is wrong; the status is 1 if anything is.
import { fileURLToPath } from "node:url";

import { ESLint } from "eslint";
import { HtmlValidate, FileSystemConfigLoader, formatterFactory } from "html-validate";
import stylelint from "stylelint";

import { embeddedText, embeddedTexts, sourceFolder } from "./pages.mjs";

const here = fileURLToPath(new URL(".", import.meta.url));
let isClean = true;

function report(text) {
  if (text.trim()) {
    console.log(text);
    isClean = false;
  }
}

async function lintScripts() {
  const eslint = new ESLint({ cwd: fileURLToPath(new URL("../..", import.meta.url)), overrideConfigFile: `${here}eslint.config.js` });
  const results = await eslint.lintFiles([`${sourceFolder}page/*.js`, `${here}*.mjs`, `${here}*.js`]);
  for (const name of embeddedTexts().keys()) {
    if (name.endsWith("_js")) {
      results.push(...(await eslint.lintText(embeddedText(name), { filePath: `${sourceFolder}page/whole/${name}.js` })));
    }
  }
  const formatter = await eslint.loadFormatter("stylish");
  report(await formatter.format(results));
}

async function lintStyles() {
  const { report: text, errored } = await stylelint.lint({
    files: `${sourceFolder}page/*.css`,
    configFile: `${here}stylelint.config.js`,
    formatter: "string",
    quiet: true,
  });
  report(errored ? text : "");
}

/** The templates without their contents. */
async function lintTemplates() {
  const loader = new FileSystemConfigLoader();
  const validator = new HtmlValidate(loader);
  for (const name of [...embeddedTexts().keys()].filter((text) => text.endsWith("_html"))) {
    const html = embeddedText(name).replaceAll("[[title]]", "Title").replaceAll("[[headline]]", "Headline").replaceAll(/\[\[[\w-]+\]\]/g, "");
    const result = await validator.validateString(html, `${here}${name}.html`);
    report(result.valid ? "" : formatterFactory("text")(result.results));
  }
}

await lintScripts();
await lintStyles();
await lintTemplates();
process.exit(isClean ? 0 : 1);
