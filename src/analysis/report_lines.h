#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "platform/line_reader.h"

namespace kiv {

/// Opens a text file for reading line by line. One that cannot be opened ends the program with the message.
LineReader openLines(Host& host, const std::string& name, const std::string& failure);

/// Ends the program when it was the medium that ended the file: half a report must not pass for a whole one.
void checkMedium(Host& host, const LineReader& lines, const std::string& name);

/// Hands on every line that is no comment. A failing medium ends the program.
void forEachRecord(Host& host, LineReader lines, const std::string& name,
                   const std::function<void(std::string_view line)>& take);

}  // namespace kiv
