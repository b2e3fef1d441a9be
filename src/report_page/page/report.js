"use strict";

function startCopying() {
  const button = byId("copy-command");
  if (!button) {
    return;
  }
  button.hidden = false;
  button.addEventListener("click", async () => {
    const command = byId("next-command");
    try {
      await navigator.clipboard.writeText(command.textContent);
      button.textContent = "Copied";
    } catch {
      getSelection().selectAllChildren(command);
      button.textContent = "Selected: copy it with Ctrl+C";
    }
  });
}

/** Where several systems share a pixel, the height says in how many of them an instrument is present. */
function drawShares(context, cells, width, colors) {
  const height = 8;
  for (let x = 0; x < width; ++x) {
    const first = Math.floor((x * cells.length) / width);
    const part = cells.slice(first, Math.max(first + 1, Math.floor(((x + 1) * cells.length) / width)));
    const present = part.filter((kind) => kind !== 0);
    if (present.length > 0) {
      const share = (height * present.length) / part.length;
      context.fillStyle = colors.cells[Math.max(...present)];
      context.fillRect(x, 2 + height - share, 1, share);
    }
  }
}

/** A line for each instrument in the table: where it is present. */
function drawPresence(chart, colors = pageColors()) {
  const width = 160;
  const byIdentifier = new Map(chart.instruments.map((instrument) => [String(instrument.id), instrument]));
  for (const cell of document.querySelectorAll(".presence")) {
    const instrument = byIdentifier.get(cell.dataset.id);
    if (!instrument) {
      continue;
    }
    cell.querySelector("canvas")?.remove();
    const canvas = make("canvas", { "aria-hidden": "true" });
    const context = sizedContext(canvas, width, 12);
    const unit = width / instrument.cells.length;
    context.fillStyle = colors.line;
    context.fillRect(0, 10, width, 1);
    if (unit < 1) {
      drawShares(context, instrument.cells, width, colors);
    } else {
      instrument.cells.forEach((kind, system) => {
        if (kind !== 0) {
          context.fillStyle = colors.cells[kind];
          context.fillRect(system * unit, 2, unit - (unit > 4 ? 1 : 0), 8);
        }
      });
    }
    cell.prepend(canvas);
  }
}

/** On paper everything is open that says something, and the whole map is there. */
function startPrinting(map, systems, chart) {
  let opened = [];
  let closeSystems = () => {};
  addEventListener("beforeprint", () => {
    opened = [...document.querySelectorAll("details.problem:not([open]), #layouts:not([open])")];
    opened.forEach((details) => {
      details.open = true;
    });
    closeSystems = systems.openForPrinting();
    map.printed.replaceChildren(...map.printable());
    drawPresence(chart, PAPER_COLORS);
  });
  addEventListener("afterprint", () => {
    opened.forEach((details) => {
      details.open = false;
    });
    closeSystems();
    map.printed.replaceChildren();
    drawPresence(chart);
  });
}

/** Follows links to systems, whose pictures are not there before. */
function startLinks(systems) {
  const follow = () => {
    const target = /^#system-(\d+)$/.exec(location.hash);
    if (target) {
      systems.open(Number(target[1]));
    }
    const details = location.hash.startsWith("#problem-") ? byId(location.hash.slice(1)) : null;
    if (details) {
      details.open = true;
    }
  };
  document.addEventListener("click", (event) => {
    const link = event.target.closest?.("a[href^='#']");
    if (link && link.getAttribute("href") === location.hash) {
      event.preventDefault();
      follow();
    }
  });
  addEventListener("hashchange", follow);
  follow();
}

/** Back after a choice in the map returns there. */
function startWayBack(map) {
  addEventListener("hashchange", () => {
    if (history.state?.isMap) {
      map.frame.scrollIntoView({ block: "nearest" });
      map.canvas.focus({ preventScroll: true });
    }
  });
}

function start() {
  const report = JSON.parse(byId("data").textContent);
  startCopying();
  startProposals(report);
  if (report.chart.count === 0) {
    return;
  }
  const chart = new Chart(report.chart, report.problems);
  document.body.append(glyphDefinitions(report.glyphs));
  const systems = new SystemList(byId("system-list"), report, chart);
  const map = new LayoutMap(byId("map-view"), chart, (system) => {
    history.replaceState({ isMap: true }, "", "#map");
    history.pushState(null, "", `#system-${system}`);
    systems.open(system);
  });
  drawPresence(chart);
  onColorsChange(() => drawPresence(chart));
  startPrinting(map, systems, chart);
  startWayBack(map);
  startLinks(systems);
}

start();
