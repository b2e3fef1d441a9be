#pragma once

#include <string>

#include "messages/message.h"

namespace kiv::messages {

// What is wrong with the names file, and with the names in it. namesFile is what the location names.

/// What becomes of a names file that is refused; the message says when it will be deleted.
enum class RefusedNames { areDeleted, areKept };

Message recordNotTerminated(const std::string& line, const std::string& namesFile);
Message recordWithoutFolder(const std::string& record, const std::string& namesFile,
                            RefusedNames fate = RefusedNames::areDeleted);
Message foldersDiffer(const std::string& namesFile, RefusedNames fate = RefusedNames::areDeleted);
/// A name on a diskette that may only be missing from its drive.
Message fileMissingOnDiskette(const std::string& name);
Message fileMissing(const std::string& name, RefusedNames fate = RefusedNames::areDeleted);
Message namesFileNotErased(const std::string& namesFile);
/// Critical: there is no names file to view.
Message namesFileNotCreated(const std::string& namesFile);
/// Critical at the end of the program; the panel shows it and continues.
Message noInputFiles(const std::string& namesFile);

/// Critical: a page file that is missing, or is not named by the convention.
Message namingProblem(const std::string& file, const std::string& currentFolder);
Message nameWithoutNumber(const std::string& file);
Message reservedName(const std::string& file);
/// The letters of a page are not A, B, C ...; file is its first one.
Message oddPageLetters(const std::string& pageName, const std::string& letters, const std::string& file);

}  // namespace kiv::messages
