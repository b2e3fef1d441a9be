#include "apps/companions/unusable_names.h"

namespace kiv {

bool isNetworkPath(std::wstring_view path) {
  return path.find(L"\\\\") != std::wstring_view::npos;
}

bool lacksCharacters(std::wstring_view path) {
  return path.find(L'?') != std::wstring_view::npos;
}

}  // namespace kiv
