#pragma once

#include <string>

#include "messages/message.h"

namespace kiv::messages {

// What is wrong with a page file, or with writing one. All but the last two are critical.

/// itemNumber is the broken item's number in the file; 0 stands for the file's head.
Message structuralError(const std::string& file, int itemNumber, const std::string& currentFolder);
/// The same as Sort Instrument words it.
Message structuralErrorInSort(const std::string& file, int itemNumber);
Message tooManyItems(const std::string& file);
Message resultNotWritten(const std::string& file);
/// A page that was not written, as it does not give this item of it back. The origin is the item of an input that
/// became it; one without a file is not named.
Message resultUnreadable(const std::string& file, int itemNumber, const Location& origin);
/// Whether the message says that a page file is damaged, of which kivsys recover may save what it still holds.
bool isDamage(const Message& message);
/// Cells of different kinds were to be exchanged; the run continues.
Message exchangeOfDifferentKinds();
/// Cells of a kind that cannot be exchanged; the run continues.
Message exchangeOfUnknownKind();

}  // namespace kiv::messages
