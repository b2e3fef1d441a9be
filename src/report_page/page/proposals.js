"use strict";

/** The boxes of a proposal, in the table and at its pictures, have the same state. */
function setProposal(proposal, isTicked) {
  for (const box of document.querySelectorAll(`input[data-proposal="${proposal}"]`)) {
    box.checked = isTicked;
  }
}

function tickedProposals(count) {
  return [...Array(count).keys()].filter((proposal) => byId(`proposal-${proposal}`).checked);
}

/** Boxes beside a picture; they follow those of the table. */
function proposalBoxes(proposals, report) {
  const boxes = proposals.map((proposal) => {
    const [, label, words] = report.proposals[proposal];
    const box = make("input", { type: "checkbox", "data-proposal": String(proposal) });
    box.checked = byId(`proposal-${proposal}`).checked;
    return make("li", {}, make("label", {}, box, `Accept ${label} (${words})`));
  });
  return make("ul", { class: "accept" }, ...boxes);
}

function correctionsText(report) {
  const lines = tickedProposals(report.proposals.length).map((proposal) => report.proposals[proposal][3]);
  return report.csvHead + lines.join("");
}

function saveCorrections(report) {
  const url = URL.createObjectURL(new Blob([correctionsText(report)], { type: "text/csv" }));
  const link = make("a", { href: url, download: "corrections.csv" });
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(url), 10000);
}

function startProposals(report) {
  const all = report.proposals.length;
  if (all === 0) {
    return;
  }
  const count = () => {
    const ticked = tickedProposals(all).length;
    byId("proposal-count").textContent = `${ticked} of ${all} ticked`;
    byId("save-corrections").disabled = ticked === 0;
  };
  document.addEventListener("change", (event) => {
    const { proposal } = event.target.dataset;
    if (proposal !== undefined) {
      setProposal(proposal, event.target.checked);
      count();
    }
  });
  const tick = (isTicked) => {
    for (let proposal = 0; proposal < all; ++proposal) {
      setProposal(proposal, isTicked);
    }
    count();
  };
  byId("tick-all").addEventListener("click", () => tick(true));
  byId("tick-none").addEventListener("click", () => tick(false));
  byId("save-corrections").addEventListener("click", () => saveCorrections(report));
  for (const box of document.querySelectorAll("input[data-proposal]")) {
    box.disabled = false;
  }
  byId("proposal-actions").hidden = false;
  count();
}
