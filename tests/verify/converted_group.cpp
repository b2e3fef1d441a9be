#include "tests/verify/converted_group.h"

#include <algorithm>
#include <utility>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "shell/conversion_run.h"
#include "shell/start_up.h"
#include "verify/page_items.h"

namespace kiv::test {
namespace {

constexpr const char* namesFile = "C:\\N.TXT";

}  // namespace

std::string ConvertedGroup::resultName(int system) {
  const std::string number = std::to_string(system);
  return "C:\\OUT\\WORK" + std::string(4 - number.size(), '0') + number + ".MUS";
}

ConvertedGroup::ConvertedGroup(const std::map<std::string, std::string>& pages, bool showNumbers,
                               RestStaves restStaves) {
  conversion.fits = restStaves == RestStaves::fitting;
  std::string names;
  for (const auto& [name, bytes] : pages) {
    replaceInput(name, bytes);
    names += "C:\\M\\" + name + " 1\r\n";
  }
  host.addFile(namesFile, names);
  KivSystem program(host);
  prepareForPanel(program);
  program.settings.namesFile = namesFile;
  program.panel.chkShowInstrNumber.checked = showNumbers;
  const auto convert = [&] {
    if (conversion.fits) {
      convertGroup(program, {resultName(1), true, showNumbers, ReadBack::yes, restStaves});
    } else {
      cmdConvert_Click(program);
    }
  };
  converted_ = endOf(host, [&] { cmdRun_Click(program); }).value_or(0) == 0;
  program.panel.txtFirstResultFile.text = resultName(1);
  converted_ = converted_ && endOf(host, convert).value_or(0) == 0;
}

proof::Verification ConvertedGroup::verify() {
  return proof::verify(host, host, namesFile, conversion);
}

std::string ConvertedGroup::findings() {
  std::string lines;
  for (const proof::Finding& finding : verify().findings) {
    lines += finding.file.substr(finding.file.rfind('\\') + 1) +
             (finding.item == 0 ? "" : ", item " + std::to_string(finding.item)) + ": " + finding.what + "\n";
  }
  return lines;
}

int ConvertedGroup::systems() const {
  int count = 0;
  while (host.hasFile(resultName(count + 1))) {
    ++count;
  }
  return count;
}

std::string ConvertedGroup::everythingWritten() const {
  std::string all = host.file(reportFile).substr(host.file(reportFile).find('\n')) + host.file(verdictFile);
  for (int system = 1; system <= systems(); ++system) {
    all += result(system);
  }
  return all;
}

void ConvertedGroup::changeResult(int system, const std::function<void(std::vector<Item>&)>& change) {
  std::vector<Item> items;
  for (const proof::PageItem& read : proof::loadPage(host, resultName(system)).items) {
    items.push_back(read.item);
  }
  change(items);
  proof::PageBytes bytes;
  std::for_each(items.begin(), items.end(), [&](const Item& item) { bytes.add(item); });
  replaceResult(system, std::move(bytes).complete());
}

}  // namespace kiv::test
