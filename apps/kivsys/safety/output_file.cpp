#include "apps/kivsys/safety/output_file.h"

#include <filesystem>
#include <iostream>

#include "platform/bounded_file.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

/// More than any drawing or manifest has.
constexpr std::size_t largestOutput = std::size_t{1} << 28U;

std::string wordsFor(OutputKind kind) {
  switch (kind) {
    case OutputKind::drawing:
      return "an SVG drawing";
    case OutputKind::manifest:
      return "a manifest";
    case OutputKind::page:
      return "a page";
    case OutputKind::corrections:
      return "a table of corrections";
    case OutputKind::htmlReport:
      return "a report of kivsys";
  }
  return "";
}

/// Writes a file, although another one may have taken its name since the run began.
std::optional<std::string> writeFile(NativeSystem& system, const OutputFilePlan& output, std::string_view content,
                                     OldFile oldFile) {
  const auto isFree = [&] { return kindOf(system.diskName(output.name)) == PathKind::missing; };
  if (oldFile == OldFile::kept || (oldFile == OldFile::replaced && isFree())) {
    auto failure = system.createFile(output.name, content);
    if (!failure || oldFile == OldFile::kept || isFree()) {
      return failure;
    }
  }
  if (oldFile == OldFile::replaced) {
    if (const auto reasons = refusalsOfOutput(system, output, InputFiles()); !reasons.empty()) {
      return reasons.front();
    }
  }
  return system.replaceFile(output.name, content);
}

}  // namespace

bool isStandardOutput(const std::string& typed) {
  return typed == standardOutput || typed == "/dev/stdout";  // that may be a file that others write to as well
}

std::string outputName(NativeSystem& system, const std::string& typed) {
  if (isStandardOutput(typed)) {
    return standardOutput;
  }
  return typed.empty() ? typed : system.fullName(typed);
}

std::vector<std::string> refusalsOfOutput(NativeSystem& system, const OutputFilePlan& output,
                                          const InputFiles& inputs) {
  if (output.name.empty() || output.name == standardOutput) {
    return {};
  }
  const std::string path = system.diskName(output.name);
  if (const auto reason = inputs.refusal(output.what, path)) {
    return {*reason};
  }
  if (kindOf(path) != PathKind::file) {
    return {};
  }
  const auto content = readBounded(system, output.name, largestOutput).bytes;
  if (!content) {
    return {path + " is there and cannot be read, so it is not replaced"};
  }
  const std::string name = system.upperCase(path);
  const bool isNamedPage = name.ends_with(".MUS") || name.ends_with(".PAG");
  const bool isEmptyPage = content->empty() && isNamedPage && output.kind != OutputKind::page;
  if ((content->empty() && !isEmptyPage) || isOfKind(*content, output.kind)) {
    return {};
  }
  return {path + (isEmptyPage || isPage(*content) ? " is a page" : " is not " + wordsFor(output.kind)) +
          ", and is not replaced; name another file"};
}

std::optional<std::string> writeOutput(NativeSystem& system, const OutputFilePlan& output, std::string_view content,
                                       OldFile oldFile) {
  const std::string& name = output.name;
  if (name == standardOutput) {
    std::cout << content << std::flush;
    return std::cout ? std::nullopt : std::optional<std::string>("cannot write to standard output");
  }
  if (kindOf(system.diskName(name)) != PathKind::device) {
    return writeFile(system, output, content, oldFile);
  }
  letSignalsEndReading(true);                                 // also waiting for a reader of the pipe
  const auto device = system.NativeSystem::openOutput(name);  // not a new file in the place of the device
  letSignalsEndReading(false);
  return device ? device->write(content) : std::optional<std::string>("it cannot be opened");
}

std::string notWritten(const std::string& shown, const std::string& path, const std::string& failure) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  const std::string shownFolder = std::filesystem::path(shown).parent_path().string();
  const bool isFolderMissing = !folder.empty() && kindOf(folder) == PathKind::missing;
  return "cannot write " + shown + ": " + failure +
         (isFolderMissing ? "; make the folder " + (shownFolder.empty() ? folder : shownFolder) +
                                " first, or name a file in another one"
                          : "");
}

}  // namespace kiv
