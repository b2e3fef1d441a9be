#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

// A call is one line of fields, KEY=value, with commas between them. Nothing is quoted and values may hold commas, so
// the keys, which are known and come in a fixed order, show where a value ends.

/// The values of the fields with these keys, in their order. The last one runs to the end of the line. nullopt when the
/// line does not begin with the first key, or lacks one.
std::optional<std::vector<std::string>> fieldValues(std::string_view line, const std::vector<std::string_view>& keys);

/// What KIVNAMES is asked: which files to offer, and where to write the chosen ones.
struct NamesCall {
  std::string startFolder;
  std::string type;       ///< the suffix, without its period
  std::string musFolder;  ///< the folder of the files; "" when it is unknown
  std::string namesFile;
};
inline constexpr std::string_view namesCallForm =
    "STARTDIR=folder,SUFFIX=type,MUSFOLDER=folder,NAMESFILE=file,DEBUG=NO";
/// nullopt when the line has another form, or leaves type or names file empty.
std::optional<NamesCall> parseNamesCall(std::string_view line);

/// What KIVOLE is asked: which of the dropped files to keep, and where to write them.
struct DropCall {
  std::string namesFile;
  std::string type;  ///< the suffix, without its period
  std::string list;  ///< the dropped paths, a comma after each
};
inline constexpr std::string_view dropCallForm =
    "STARTDIR=folder,NAMESFILE=file,DEBUG=NO,TYPE=type,LIST=path,path,...,";
/// nullopt when the line has another form, or leaves type or names file empty.
std::optional<DropCall> parseDropCall(std::string_view line);

/// What KIVFOLDR is asked: how to ask for a folder, and where to write it.
struct FolderCall {
  std::string prompt;
  std::string startFolder;
  std::string answerFile;
};
inline constexpr std::string_view folderCallForm = "REMARK=prompt,STARTDIR=folder,FILE=file,DEBUG=NO";
/// nullopt when the line has another form, or leaves the answer file empty.
std::optional<FolderCall> parseFolderCall(std::string_view line);

}  // namespace kiv
