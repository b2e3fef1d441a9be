#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "messages/message.h"
#include "platform/files.h"
#include "platform/line_reader.h"

namespace kiv {

/// Opens a text file for reading line by line. One that cannot be opened ends the program with the message.
LineReader openLines(Files& files, const std::string& name, const Message& failure);

/// Ends the program when an I/O error ended the file: half a file must not pass for a whole one.
void requireNoReadFailure(const LineReader& lines, const std::string& name);

/// Calls visit for every line that is no comment. An I/O error ends the program.
void forEachRecord(LineReader lines, const std::string& name, const std::function<void(std::string_view line)>& visit);

}  // namespace kiv
