#include "bench/literal/conversion.h"

#include "base/number.h"

namespace kiv::literal {

Item newItem(float type, float staff, float position) {
  Item item;
  item.par[par::type] = type;
  item.par[par::staff] = staff;
  item.par[par::position] = position;
  return item;
}

std::int16_t whole(Conversion& run, int i, int p) {
  const auto number = toInt16(run.items.itemPar(i, p));
  if (!number) {
    run.host.runTimeError(RunTimeError::overflow, run.musFileName + ", item " + std::to_string(i));
  }
  return *number;
}

std::string getElt(std::string_view rec, std::string_view par) {
  const std::string keyword = std::string(par) + "=";
  const std::size_t at = rec.find(keyword);
  if (at == std::string_view::npos) {
    return "";
  }
  const std::string_view rest = rec.substr(at + keyword.size());
  return std::string(rest.substr(0, rest.find(',')));
}

std::int16_t wholeValue(Conversion& run, const std::string& text, std::string_view record) {
  const auto number = toInt16(numericValue(text));
  if (!number) {
    run.host.runTimeError(RunTimeError::overflow, record);
  }
  return *number;
}

}  // namespace kiv::literal
