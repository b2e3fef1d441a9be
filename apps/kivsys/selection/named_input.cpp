#include "apps/kivsys/selection/named_input.h"

#include <utility>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "platform/console/error_line.h"
#include "platform/console/standard_input.h"

namespace kiv {

NamedInput readNamedInput(NativeSystem& system, const std::string& typed, const InputKind& kind) {
  const bool isStandardInput = typed == standardInput;
  if (const auto reason = isStandardInput ? std::nullopt : refusalOfName(typed, "file")) {
    printError(*reason);
    return {std::nullopt, exit_status::wrongUsage};
  }
  const std::string name = NativeSystem::coreName(typed);
  BoundedContent content = isStandardInput ? readStandardInput(kind.limit) : readBounded(system, name, kind.limit);
  if (content.bytes) {
    return {std::move(content.bytes), exit_status::normal};
  }
  if (content.isTooLarge) {
    printError(typed + " " + tooLarge(kind.limit, kind.what));
    return {std::nullopt, exit_status::critical};
  }
  const auto reason = isStandardInput ? std::nullopt : whyUnreadable(typed, system.diskName(name));
  printError(reason.value_or("cannot read " + typed + ": I/O error"));
  return {std::nullopt, reason ? exit_status::wrongUsage : exit_status::critical};
}

}  // namespace kiv
