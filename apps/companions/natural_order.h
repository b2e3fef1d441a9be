#pragma once

#include <string_view>

namespace kiv {

/// Whether path a comes before path b as users count pages: groups of digits compare as numbers (PAGE2 before PAGE10),
/// and a name comes before the same name with a page letter. Case matters; callers convert it.
bool comesBefore(std::wstring_view a, std::wstring_view b);

}  // namespace kiv
