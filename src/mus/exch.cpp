#include "mus/exch.h"

#include <utility>

#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

using Value = std::variant<std::int16_t, float, std::string, bool>;

Value valueOf(const CellRef& cell) {
  return std::visit([](const auto* place) { return Value(*place); }, cell);
}

float asFloat(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    return static_cast<float>(numericValue(*text));
  }
  return std::visit(
      [](const auto& number) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(number)>>) {
          return static_cast<float>(number);
        } else {
          return 0.0F;
        }
      },
      value);
}

std::string asText(const Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? *text : generalNumber(asFloat(value));
}

void store(const CellRef& cell, const Value& value) {
  if (auto* const* text = std::get_if<std::string*>(&cell)) {
    **text = asText(value);
  } else if (auto* const* number = std::get_if<float*>(&cell)) {
    **number = asFloat(value);
  } else if (auto* const* truth = std::get_if<bool*>(&cell)) {
    **truth = asFloat(value) != 0;
  } else {
    const auto whole = toInt16(asFloat(value));
    if (!whole) {
      endProgram(messages::overflowIn("exch"));
    }
    *std::get<std::int16_t*>(cell) = *whole;
  }
}

}  // namespace

void exch(User& user, CellRef a, CellRef b) {
  if (a.index() == b.index() && !std::holds_alternative<bool*>(a)) {
    std::visit([&](auto* cell) { std::swap(*cell, *std::get<decltype(cell)>(b)); }, a);
    return;
  }
  if (a.index() != b.index()) {
    user.show(messages::exchangeOfDifferentKinds());
  }
  if (std::holds_alternative<bool*>(a)) {
    user.show(messages::exchangeOfUnknownKind());
    return;
  }
  const Value kept = valueOf(a);
  store(a, valueOf(b));
  store(b, kept);
}

}  // namespace kiv
