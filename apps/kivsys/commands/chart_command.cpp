#include "apps/kivsys/commands/chart_command.h"

#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/exit_status.h"
#include "conversion/report_index.h"
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
  style.colour = NativeSystem::outputTakesColour();
  return style;
}

int chartNames(ConsoleHost& host, const std::string& namesFile, const std::string& out, bool allowZeroId) {
  KivSystem program(host);
  Chart chart;
  try {
    analyse(program, namesFile, allowZeroId);
    chart = makeChart(host, readReport(host), allowZeroId);
  } catch (const ProgramEnd& end) {
    return end.exitCode == exit_status::normal ? exit_status::normal : exit_status::critical;
  }
  if (out.empty()) {
    return deliver(host, "-", chartText(chart, styleOfOutput()));
  }
  for (ChartPage& page : chart.pages) {
    page.name = NativeSystem::toUtf8(page.name);
  }
  return deliver(host, out, chartSvg(chart));
}

}  // namespace

int runChart(const ChartOptions& options) {
  ConsoleHost host;
  const bool isFile = !options.out.empty() && options.out != "-";
  const std::string out = isFile ? host.fullName(options.out) : options.out;
  return runOnSelection(host, options.selection, [&](const std::string& namesFile) {
    return chartNames(host, namesFile, out, options.allowZeroId);
  });
}

}  // namespace kiv
