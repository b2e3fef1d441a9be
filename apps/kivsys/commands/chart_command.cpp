#include "apps/kivsys/commands/chart_command.h"

#include "analysis/report_index.h"
#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/text_table.h"
#include "apps/kivsys/safety/output_file.h"
#include "diagnostics/group_facts.h"
#include "drawing/chart_drawings.h"
#include "platform/console/console_host.h"
#include "platform/console/printable.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

TextStyle styleOfOutput() {
  TextStyle style;
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
    const std::string text = shortened(printable(name), mostColumns);
    names[id] = {utf8 ? NativeSystem::toUtf8(text) : text, widthOf(text)};
  }
  return names;
}

int chartNames(ConsoleHost& console, const std::string& namesFile, const std::string& out, bool allowZeroId) {
  OverlayFiles files(console.system(), console.system());  // report and verdict are not asked for
  NoPrograms programs;
  KivSystem program({files, console.user(), programs, console.system()});
  GroupFacts facts({.instruments = true});
  Chart chart;
  const auto exitCode = exitCodeOf(console.user(), [&] {
    analyze(program, namesFile, allowZeroId, &facts);
    chart = makeChart(console.system(), readReport(files), allowZeroId);
    chart.names = namesFor(facts, !out.empty());
  });
  if (exitCode) {
    return *exitCode == exit_status::normal ? exit_status::normal : exit_status::critical;
  }
  if (out.empty()) {
    for (ChartPage& page : chart.pages) {
      page.name = printable(page.name);
    }
    return deliver(console.system(), "-", chartText(chart, styleOfOutput()));
  }
  for (ChartPage& page : chart.pages) {
    page.name = NativeSystem::toUtf8(page.name);
  }
  return deliver(console.system(), out, chartSvg(chart));
}

}  // namespace

int runChart(const ChartOptions& options) {
  ConsoleHost console;
  const bool isFile = !options.out.empty() && options.out != "-";
  const std::string out = isFile ? console.system().fullName(options.out) : options.out;
  const SelectionUse use{
      FolderUse::read, false, [&](const SelectedPages& pages) {
        return refusalsOfOutput(console.system(), {"drawing", out, OutputKind::drawing}, InputFiles(pages));
      }};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    return chartNames(console, namesFile, out, options.allowZeroId);
  });
}

}  // namespace kiv
