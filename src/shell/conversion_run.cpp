#include "shell/conversion_run.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "conversion/conversion.h"
#include "input/file_names.h"
#include "input/files.h"
#include "messages/conversion_messages.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// The name of a system's result: the number and suffix at the end of the first result's name are replaced.
std::string resultName(Machine& machine, const std::string& firstResultFile, std::int16_t system) {
  constexpr std::size_t numberAndSuffix = std::string_view("0001.MUS").size();
  constexpr std::size_t digits = 4;
  const auto stem = withoutLastCharacters(machine, firstResultFile, numberAndSuffix);
  if (!stem) {
    endProgram(messages::invalidArgument(firstResultFile));
  }
  const std::string number = std::to_string(system);
  return *stem + std::string(digits - std::min(digits, number.size()), '0') + number + ".MUS";
}

void askBeforeOverwriting(User& user, const std::string& musFileName) {
  if (user.show(messages::fileExists(musFileName)) == Answer::no) {
    endProgram(messages::stoppedByUser());
  }
}

/// The conversion of one system after the other.
class GroupConversion {
 public:
  GroupConversion(KivSystem& program, const ConversionOptions& options)
      : program_(program),
        options_(options),
        conversion_(program.host.files, {program.items, program.order, program.firstClefs}, options.restStaves) {
    for (const RequiredInstrument& instrument : options.required) {
      conversion_.require(instrument);
    }
  }

  /// Converts the systems 1, 2, 3 ... up to the first without a record. Returns their number.
  int run() {
    int all = 0;
    try {
      all = convertAll();
    } catch (...) {
      finishWriting();  // a result that cannot be written comes before what has ended the systems after it
      throw;
    }
    finishWriting();
    return all;
  }

 private:
  int convertAll() {
    const int all = conversion_.systemCount();
    for (std::int16_t system = next(0); system <= all; system = next(system)) {
      program_.host.user.showProgress(system - 1, all, "systems");
      conversion_.convertSystem(system);
      writeResult(system);
    }
    program_.host.user.showProgress(all, all, "systems");
    return all;
  }

  /// The number of the next system; one that 16 bits do not hold ends the program.
  std::int16_t next(std::int16_t system) const {
    if (system == std::numeric_limits<std::int16_t>::max()) {
      endProgram(messages::overflow({.file = program_.musFileName}));
    }
    return static_cast<std::int16_t>(system + 1);
  }

  void writeResult(std::int16_t system) {
    Files& files = program_.host.files;
    const std::string name = resultName(program_.host.machine, options_.firstResultFile, system);
    program_.musFileName = name;
    if (options_.showInstrumentNumbers) {
      showInstrumentNumbers(program_.items);
    }
    const bool isKnown = !options_.overwrite && existsAndMayGo(name);
    conversion_.finishSystem();
    const auto buffer = freeBuffer();
    const bool isWritten = encodeFile(name, program_.items, *buffer, options_.readBack);
    const bool exists = options_.overwrite ? FileExists(program_.host, name) : isKnown;
    if (isWritten) {
      endIfNotWritten(files.replaceSoon(name, buffer));
    }
    if (isWritten && options_.observer != nullptr) {
      options_.observer->resultHandedOver(system, name, buffer);
    }
    if (exists) {
      conversion_.fileWasReplaced();
    }
  }

  /// A buffer that nobody else has. Others drop theirs on this thread only, so that their number is right.
  std::shared_ptr<std::string> freeBuffer() {
    const auto free = std::find_if(buffers_.begin(), buffers_.end(), [](const auto& b) { return b.use_count() == 1; });
    return free != buffers_.end() ? *free : buffers_.emplace_back(std::make_shared<std::string>());
  }

  /// Whether the user lets a file be replaced that is there.
  bool existsAndMayGo(const std::string& name) {
    finishWriting();
    const bool exists = FileExists(program_.host, name);
    if (exists) {
      askBeforeOverwriting(program_.host.user, name);
    }
    return exists;
  }

  void finishWriting() { endIfNotWritten(program_.host.files.finishReplacing()); }

  void endIfNotWritten(const std::optional<WriteFailure>& failure) {
    if (failure) {
      program_.musFileName = failure->name;
      endProgram(messages::resultNotWritten(failure->name));
    }
  }

  KivSystem& program_;
  const ConversionOptions& options_;
  Conversion conversion_;
  std::vector<std::shared_ptr<std::string>> buffers_;  // of the results
};

}  // namespace

Message convertGroup(KivSystem& program, const ConversionOptions& options) {
  const int systems = GroupConversion(program, options).run();
  return messages::created(systems, options.firstResultFile, program.musFileName);
}

}  // namespace kiv
