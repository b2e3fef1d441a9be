#include "apps/kivsys/survey/open_state.h"

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/output_file.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

/// The file to use as the state. One that is there in another case only is that file.
std::string stateFile(ConsoleSystem& system, const std::string& typed) {
  const std::string found = system.diskName(system.fullName(typed));
  return kindOf(typed) == PathKind::missing && kindOf(found) != PathKind::missing ? found : typed;
}

}  // namespace

std::optional<StateRefusal> openState(ConsoleSystem& system, const SurveyOptions& options, const Library& library,
                                      SurveyState& state) {
  if (options.resume == standardOutput) {
    return StateRefusal{exit_status::wrongUsage,
                        "the state of a survey cannot be kept on standard output, which has its lines"};
  }
  const std::string file = stateFile(system, options.resume);
  if (system.upperCase(file).ends_with(".MUS")) {
    return StateRefusal{exit_status::wrongUsage, file + " has the name of a page; name another file"};
  }
  if (const auto identity = identityOf(file)) {
    for (const LibraryPiece& piece : library.pieces) {
      for (const std::string& page : piece.pages) {
        if (identityOf(system.diskName(page)) == identity) {
          return StateRefusal{exit_status::wrongUsage, file + " is a page of the library; name another file"};
        }
      }
    }
  }
  return state.open(file, options.folders);
}

}  // namespace kiv
