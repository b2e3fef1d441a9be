#include "messages/message.h"

#include <utility>

namespace kiv {

Message asCritical(Message message) {
  message.icon = Icon::critical;
  return message;
}

void endProgram(Message critical) {
  throw ProgramEnd{1, std::move(critical)};
}

}  // namespace kiv
