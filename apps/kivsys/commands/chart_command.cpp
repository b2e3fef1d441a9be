#include "apps/kivsys/commands/chart_command.h"

#include <utility>

#include "analysis/report_index.h"
#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/output/text_table.h"
#include "apps/kivsys/safety/output_file.h"
#include "diagnostics/group_facts.h"
#include "diagnostics/warnings.h"
#include "drawing/chart_drawings.h"
#include "platform/console/console_host.h"
#include "platform/console/printable.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

TextStyle styleOfOutput(std::size_t systemsPerRow) {
  TextStyle style;
  style.systemsPerRow = systemsPerRow;
  if (const std::size_t columns = NativeSystem::outputColumns(); columns > 0) {
    style.width = columns;
  }
  style.color = NativeSystem::outputTakesColor();
  return style;
}

/// The names of the instruments, in UTF-8 or as the terminal has them.
std::map<std::int16_t, ChartName> namesFor(const GroupFacts& facts, bool utf8) {
  constexpr std::size_t mostColumns = 20;
  std::map<std::int16_t, ChartName> names;
  for (const auto& [id, name] : shownNames(facts.instruments())) {
    const std::string full = printable(name);
    const std::string text = shortened(full, mostColumns);
    names[id] = utf8 ? ChartName{NativeSystem::toUtf8(text), widthOf(text), NativeSystem::toUtf8(full)}
                     : ChartName{text, widthOf(text), full};
  }
  return names;
}

/// A chart of pages, and where it goes.
struct PlannedChart {
  std::string out;
  bool allowZeroId = false;
  std::size_t systemsPerRow = 0;      ///< 0 for as many as fit
  const ValidPages* pages = nullptr;  ///< of a run that skips bad pages; else null
};

int show(ConsoleHost& console, Chart chart, const PlannedChart& plan) {
  if (plan.out.empty()) {
    for (ChartPage& page : chart.pages) {
      page.name = printable(page.name);
    }
    chart.piece = printable(chart.piece);
    const std::string text = chartText(chart, styleOfOutput(plan.systemsPerRow));
    return deliver(console.system(), "-", text + summaryOf(plan.pages, true), OutputKind::drawing);
  }
  for (ChartPage& page : chart.pages) {
    page.name = NativeSystem::toUtf8(page.name);
  }
  chart.piece = NativeSystem::toUtf8(chart.piece);
  return deliver(console.system(), plan.out, chartSvg(chart, plan.systemsPerRow), OutputKind::drawing);
}

int chartNames(ConsoleHost& console, const std::string& namesFile, const PlannedChart& plan) {
  if (namesFile.empty()) {
    return printOutcome(summaryOf(plan.pages, false), exit_status::critical);
  }
  OverlayFiles files(console.system(), console.system());
  NoPrograms programs;
  KivSystem program({files, console.user(), programs, console.system()});
  GroupFacts facts({.instruments = true});
  ReportIndex index;
  Chart chart;
  const auto exitCode = exitCodeOf(console.user(), [&] {
    analyzeWithoutReport(program, namesFile, plan.allowZeroId, &facts, &index);
    const auto names = program.names.nameList.begin();
    showWarnings(console.user(), files, findNameWarnings({names, names + program.names.nameCount}), false);
    chart = makeChart(console.system(), index, plan.allowZeroId);
    chart.names = namesFor(facts, !plan.out.empty());
  });
  if (exitCode) {
    return *exitCode == exit_status::normal ? exit_status::normal : exit_status::critical;
  }
  const int status = show(console, std::move(chart), plan);
  const bool isIncomplete = plan.pages != nullptr && plan.pages->anySkipped();
  return status == exit_status::normal && isIncomplete ? exit_status::critical : status;
}

}  // namespace

int runChart(const ChartOptions& options) {
  ConsoleHost console;
  const bool isFile = !options.out.empty() && options.out != "-";
  const std::string out = isFile ? console.system().fullName(options.out) : options.out;
  const SelectionUse use{
      FolderUse::read,
      options.keepGoing,
      [&](const SelectedPages& pages) {
        return refusalsOfOutput(console.system(), {"drawing", out, OutputKind::drawing}, InputFiles(pages));
      },
      {},
      true};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    if (!options.keepGoing) {
      return chartNames(console, namesFile, {out, options.allowZeroId, options.systemsPerRow, nullptr});
    }
    const ValidPages pages(console, namesFile);
    return chartNames(console, pages.namesFile(), {out, options.allowZeroId, options.systemsPerRow, &pages});
  });
}

}  // namespace kiv
