#include "apps/kivsys/commands/verify_command.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/output/proof_step.h"
#include "apps/kivsys/output/verification_json.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/safety/result_files.h"
#include "input/file_names.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"
#include "platform/separators.h"

namespace kiv {
namespace {

constexpr std::size_t mostLines = 200;

/// The text with the files of the verification named as users know them.
std::string withShownNames(std::string text, const proof::Verification& verification, const FileNamer& nameOf) {
  for (const DigestedFile& file : verification.files) {
    if (const std::size_t at = text.find(file.name); at != std::string::npos && !file.name.empty()) {
      text.replace(at, file.name.size(), nameOf(file.name));
      break;
    }
  }
  return text;
}

std::string lineOf(const proof::Verification& verification, const proof::Finding& finding, const FileNamer& nameOf) {
  return printable(nameOf(finding.file) + (finding.item == 0 ? "" : ", item " + std::to_string(finding.item)) + ": " +
                   withShownNames(finding.what, verification, nameOf)) +
         "\n";
}

std::string withFolder(ConsoleSystem& system, const std::string& name) {
  return lastBackslash(system, name) != std::string::npos ? name : system.currentFolder() + "\\" + name;
}

/// Lines that programs which check a manifest skip: by what the pages were corrected, and the table of instruments.
std::string tableComments(const PageCorrections& corrections, const LayoutTable& layout) {
  std::string lines;
  for (const CorrectionTable& table : corrections.tables) {
    lines += printable("# corrections: " + (table.path.empty() ? "standard input" : table.path) + ", SHA-256 " +
                       table.sha256 + ", " + std::to_string(table.count) + " used") +
             "\n";
  }
  if (!layout.path.empty()) {
    lines += printable("# layout: " + layout.path + ", SHA-256 " + layout.sha256) + "\n";
  }
  return lines;
}

/// The digests under the names that the files have on the disk, whatever case a names file gave them.
std::string manifestOf(ConsoleSystem& system, const LayoutTable& layout, std::vector<DigestedFile> files) {
  for (DigestedFile& file : files) {
    file.name = system.diskName(withFolder(system, file.name));
  }
  return tableComments(system.corrections(), layout) + manifestText(files);
}

/// The digests of the pages as the disk has them, of the tables with which they were corrected, and of that of the
/// instruments.
void addTables(const PageCorrections& corrections, const LayoutTable& layout, std::vector<DigestedFile>& files) {
  for (DigestedFile& file : files) {
    if (const auto page = corrections.pages.find(file.name); page != corrections.pages.end()) {
      file.sha256 = page->second.sha256;
    }
  }
  for (const CorrectionTable& table : corrections.tables) {
    if (!table.path.empty()) {
      files.push_back({NativeSystem::coreName(table.path), table.sha256});
    }
  }
  if (!layout.path.empty()) {
    files.push_back({NativeSystem::coreName(layout.path), layout.sha256});
  }
}

/// What a verification is printed with.
struct VerifyOutput {
  const VerifyOptions& options;
  const std::string& manifest;
  const ListedConversion& listed;
  const ValidPages* pages = nullptr;  // of a run that skips bad ones; else null
  const std::string& firstResult;     // its full name
};

/// The step is that of a conversion that is not proved. Before it come messages about pages.
std::string asJson(ConsoleHost& console, const proof::Verification& verification, const VerifyOutput& output,
                   const std::optional<std::string>& step) {
  ConsoleSystem& system = console.system();
  Json object = toJson(verification);
  for (std::size_t i = 0; i < verification.findings.size(); ++i) {
    const std::string path = system.diskName(withFolder(system, verification.findings[i].file));
    object["findings"][i]["path"] = kindOf(path) == PathKind::missing ? Json() : Json(NativeSystem::toUtf8(path));
  }
  if (output.pages != nullptr) {
    object["messages"] = jsonOf(console.messages());
    output.pages->addTo(object, true);
  }
  std::vector<FoundFile> paths;
  for (const DigestedFile& file : verification.files) {
    paths.push_back({file.name, system.diskName(withFolder(system, file.name))});
  }
  object["paths"] = pathsJson(paths);
  if (!system.corrections().tables.empty()) {
    object["corrected_by"] = jsonOf(system.corrections());
  }
  if (output.listed.isGiven()) {
    object["layout"] = output.listed.asJson();
  }
  const auto ofPage = stepForPage(console.messages(), system);
  object["next"] = nextJson(ofPage ? ofPage : step);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

/// Whether the folder that was typed with a result has pages, results perhaps, that others could replace.
bool hasPages(ConsoleSystem& system, const std::string& firstResult) {
  const std::vector<FolderEntry> entries = system.listFolder(justPath(system, firstResult));
  return std::any_of(entries.begin(), entries.end(), [&](const FolderEntry& entry) {
    return !entry.isFolder && system.upperCase(entry.name).ends_with(".MUS");
  });
}

/// The option for results where there are none yet: as it was typed, or in a new folder.
std::string newResultOf(ConsoleSystem& system, const VerifyOptions& options, const std::string& firstResult) {
  return options.result.empty() || hasPages(system, firstResult) ? newResultArgument(system)
                                                                 : " --result " + fileWord(options.result);
}

/// What is said when the conversion is not proved.
ProofStep stepOf(ConsoleHost& console, const proof::Verification& verification, const VerifyOutput& output) {
  ConsoleSystem& system = console.system();
  const FileNamer fullNameOf = [&](const std::string& name) { return system.shownName(withFolder(system, name)); };
  const bool hasResults = kindOf(system.diskName(output.firstResult)) == PathKind::file;
  return stepForProof(verification,
                      {output.options.selection, hasResults, newResultOf(system, output.options, output.firstResult),
                       output.options.fit, system.pages(), fullNameOf});
}

int printVerification(ConsoleHost& console, const proof::Verification& verification, const VerifyOutput& output) {
  ConsoleSystem& system = console.system();
  const VerifyOptions& options = output.options;
  const FileNamer nameOf = [&system](const std::string& name) { return system.shownName(name); };
  if (!output.manifest.empty()) {
    if (const auto failure = writeOutput(system, {"manifest", output.manifest, OutputKind::manifest},
                                         manifestOf(system, output.listed.table(), verification.files))) {
      return fail(notWritten(system.shownName(output.manifest), system.diskName(output.manifest), *failure));
    }
  }
  const bool isComplete = output.pages == nullptr || !output.pages->anySkipped();
  const int status = verification.proved() && isComplete ? exit_status::normal : exit_status::critical;
  const ProofStep step = verification.proved() ? ProofStep() : stepOf(console, verification, output);
  const std::string text = asText(verification, nameOf) + summaryOf(output.pages, true);
  int printed = status;
  if (output.manifest != standardOutput) {
    printed = printOutcome(options.json ? asJson(console, verification, output, step.next) : text, status);
  } else if (status != exit_status::normal || !console.user().isQuiet()) {
    std::cerr << text;
  }
  if (!verification.proved() && !options.json) {
    printError(step.reason);
    console.user().printNotes(step.note + (step.next ? "Next: " + printable(*step.next) + "\n" : ""));
  }
  return printed;
}

}  // namespace

proof::Verification verificationOf(ConsoleHost& console, const std::string& namesFile,
                                   proof::ConversionToProve conversion, const ListedConversion& listed) {
  conversion.listed = listed.forProof();
  proof::Verification verification =
      proof::verify(console.system(), console.system(), namesFile, conversion,
                    [&](std::size_t done, std::size_t all, std::string_view plural) {
                      console.user().showProgress(static_cast<int>(done), static_cast<int>(all), plural);
                    });
  addTables(console.system().corrections(), listed.table(), verification.files);
  return verification;
}

std::string asText(const proof::Verification& verification, const FileNamer& nameOf) {
  const proof::Counts& counts = verification.counts;
  std::string text = verification.proved() ? "PROVED=YES\n" : "PROVED=NO\n";
  text += "Inputs: " + std::to_string(counts.inputs) + "\nResults: " + std::to_string(counts.results) +
          "\nItems carried: " + std::to_string(counts.carried) + "\nItems added: " + std::to_string(counts.added) +
          "\nBarlines and braces made anew: " + std::to_string(counts.barlines) +
          "\nItems on no staff of the report: " + std::to_string(counts.leftOut) + "\n";
  std::size_t lines = 0;
  for (const proof::Finding& finding : verification.findings) {
    if (++lines > mostLines) {
      return text + "and " + std::to_string(verification.findings.size() - mostLines) + " more\n";
    }
    text += lineOf(verification, finding, nameOf);
  }
  return text;
}

int runVerify(const VerifyOptions& given) {
  VerifyOptions options = given;
  options.result = resultIn(given.result);
  ConsoleHost console;
  ConsoleSystem& system = console.system();
  if (options.json) {
    console.user().hideProgress();
  }
  const std::string manifest = outputName(system, options.manifest);
  const std::string typed = options.result.empty() ? "" : system.fullName(options.result);
  proof::ConversionToProve conversion{typed, std::nullopt, options.fit, {}};
  ListedConversion listed;
  const SelectionUse use{
      FolderUse::read, options.keepGoing, [&](const SelectedPages& pages) {
        if (!options.result.empty()) {
          if (const auto reason = refusalOfResultName(options.result)) {
            return std::vector{*reason};
          }
        } else if (!pages.pages.empty()) {
          conversion.firstResultFile = defaultResultFile(system, pages.pages.front());
        }
        const auto reasons = refusalsOfOutput(system, {"manifest", manifest, OutputKind::manifest}, InputFiles(pages));
        return reasons.empty() ? listed.prepare(system, options.selection.layout, true) : reasons;
      }};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    std::optional<ValidPages> pages;
    if (options.keepGoing) {
      pages.emplace(console, namesFile);
    }
    const bool isReduced = pages && pages->anyLeft();
    return printVerification(console,
                             verificationOf(console, isReduced ? pages->namesFile() : namesFile, conversion, listed),
                             {options, manifest, listed, pages ? &*pages : nullptr, conversion.firstResultFile});
  });
}

}  // namespace kiv
