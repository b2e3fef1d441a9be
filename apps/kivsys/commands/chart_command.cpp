#include "apps/kivsys/commands/chart_command.h"

#include "analysis/report_index.h"
#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/exit_status.h"
#include "drawing/chart_drawings.h"
#include "platform/console/console_host.h"
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

int chartNames(ConsoleHost& console, const std::string& namesFile, const std::string& out, bool allowZeroId) {
  KivSystem program(console.host());
  Chart chart;
  const auto exitCode = exitCodeOf(console.user(), [&] {
    analyze(program, namesFile, allowZeroId);
    chart = makeChart(readReport(console.system()), allowZeroId);
  });
  if (exitCode) {
    return *exitCode == exit_status::normal ? exit_status::normal : exit_status::critical;
  }
  if (out.empty()) {
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
  return runOnSelection(console, options.selection, [&](const std::string& namesFile) {
    return chartNames(console, namesFile, out, options.allowZeroId);
  });
}

}  // namespace kiv
