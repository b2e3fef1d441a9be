"use strict";

/** An element with attributes and children; a child is an element or a text, which stays a text. */
function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value !== false && value !== null) {
      element.setAttribute(name, value === true ? "" : value);
    }
  }
  element.append(...children);
  return element;
}

function byId(id) {
  return document.getElementById(id);
}

/** The colors of the page's style, which differ by scheme and contrast. */
function pageColors() {
  const style = getComputedStyle(document.documentElement);
  const color = (name) => style.getPropertyValue(name).trim();
  return {
    card: color("--card"),
    ink: color("--ink"),
    soft: color("--soft"),
    line: color("--line"),
    focus: color("--focus"),
    bad: color("--bad"),
    cells: [color("--cell-missing"), color("--cell"), color("--cell-double"), color("--cell-zero")],
  };
}

/** Calls back when the scheme, the contrast or the size of a pixel changes. */
function onColorsChange(callback) {
  for (const query of ["(prefers-color-scheme: dark)", "(forced-colors: active)", "(prefers-contrast: more)"]) {
    matchMedia(query).addEventListener("change", callback);
  }
  const watchPixels = () => {
    const changed = () => {
      callback();
      watchPixels();
    };
    matchMedia(`(resolution: ${devicePixelRatio}dppx)`).addEventListener("change", changed, { once: true });
  };
  watchPixels();
}

/** Gives a canvas its size in pixels of the page; returns its context, in which a unit is such a pixel. */
function sizedContext(canvas, width, height) {
  const ratio = Math.max(devicePixelRatio || 1, 1);
  canvas.width = Math.round(width * ratio);
  canvas.height = Math.round(height * ratio);
  canvas.style.width = `${width}px`;
  canvas.style.height = `${height}px`;
  const context = canvas.getContext("2d");
  context.setTransform(ratio, 0, 0, ratio, 0, 0);
  return context;
}

/** The number with a word that fits it. */
function counted(number, one, many) {
  return `${number} ${number === 1 ? one : many}`;
}
