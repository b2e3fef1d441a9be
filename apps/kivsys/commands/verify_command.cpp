#include "apps/kivsys/commands/verify_command.h"

#include <algorithm>
#include <iostream>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/output/verification_json.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/safety/result_files.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
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

/// The digests under the names that the files have on the disk, whatever case a names file gave them.
std::string manifestOf(ConsoleSystem& system, std::vector<DigestedFile> files) {
  for (DigestedFile& file : files) {
    file.name = system.diskName(withFolder(system, file.name));
  }
  return manifestText(files);
}

std::string asJson(ConsoleSystem& system, const proof::Verification& verification) {
  Json object = toJson(verification);
  std::vector<FoundFile> paths;
  for (const DigestedFile& file : verification.files) {
    paths.push_back({file.name, system.diskName(withFolder(system, file.name))});
  }
  object["paths"] = pathsJson(paths);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

/// Says where report and verdict are looked for, when they are not there.
void hintAtFolder(ConsoleHost& console, const proof::Verification& verification, const std::string& folder) {
  const std::string report = "KivSystem2.TXT";
  const bool isMissing =
      std::any_of(verification.findings.begin(), verification.findings.end(), [&](const proof::Finding& finding) {
        return finding.file == report && console.system().openInput(report) == nullptr;
      });
  if (isMissing) {
    console.user().printNotes("kivsys: note: there is no report in " +
                              (folder.empty() ? "the current folder" : printable(folder)) +
                              "; name the folder in which the conversion ran: --folder DIR\n");
  }
}

int printVerification(ConsoleHost& console, const proof::Verification& verification, const std::string& manifest,
                      const VerifyOptions& options) {
  ConsoleSystem& system = console.system();
  const FileNamer nameOf = [&system](const std::string& name) { return system.shownName(name); };
  if (!manifest.empty()) {
    if (const auto failure = writeOutput(system, manifest, manifestOf(system, verification.files))) {
      printError("cannot write the manifest: " + *failure);
      return exit_status::critical;
    }
  }
  const int status = verification.proved() ? exit_status::normal : exit_status::critical;
  if (manifest == standardOutput) {
    std::cerr << asText(verification, nameOf);
    return status;
  }
  if (options.json) {
    return printOutcome(asJson(system, verification), status);
  }
  const int printed = printOutcome(asText(verification, nameOf), status);
  hintAtFolder(console, verification, options.selection.folder);
  return printed;
}

}  // namespace

proof::Verification verificationOf(ConsoleHost& console, const std::string& namesFile,
                                   const proof::ConversionToProve& conversion) {
  return proof::verify(console.system(), console.system(), namesFile, conversion,
                       [&](std::size_t done, std::size_t all, std::string_view plural) {
                         console.user().showProgress(static_cast<int>(done), static_cast<int>(all), plural);
                       });
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

int runVerify(const VerifyOptions& options) {
  ConsoleHost console;
  ConsoleSystem& system = console.system();
  if (options.json) {
    console.user().hideProgress();
  }
  const std::string manifest = outputName(system, options.manifest);
  const std::string typed = options.result.empty() ? "" : system.fullName(options.result);
  proof::ConversionToProve conversion{typed, std::nullopt};
  const SelectionUse use{
      FolderUse::read, false, [&](const SelectedPages& pages) {
        if (!options.result.empty()) {
          if (const auto reason = refusalOfResultName(options.result)) {
            return std::vector{*reason};
          }
        } else if (!pages.pages.empty()) {
          conversion.firstResultFile = defaultResultFile(system, pages.pages.front());
        }
        return refusalsOfOutput(system, {"manifest", manifest, OutputKind::manifest}, InputFiles(pages));
      }};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    return printVerification(console, verificationOf(console, namesFile, conversion), manifest, options);
  });
}

}  // namespace kiv
