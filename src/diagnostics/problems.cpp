#include "diagnostics/problems.h"

#include "base/number.h"

namespace kiv {
namespace {

/// A number with the digits that reports and messages give it; nullopt for what is none.
std::optional<double> asPrinted(double number) {
  return strictNumber(generalNumber(static_cast<float>(number)));
}

std::optional<double> asPrinted(const std::optional<double>& number) {
  return number ? asPrinted(*number) : std::nullopt;
}

/// A location of a record lists a staff, but has no item of a file.
bool isOfRecord(const Location& location) {
  return location.system || location.staff || location.instrument;
}

/// Adds what the page files say about the messages of one run.
class ProblemFinder {
 public:
  explicit ProblemFinder(Files& files) : pages_(files) {}

  Problem find(const Message& message, std::size_t index, const Location& location);

 private:
  void lookUpItem(int number, Problem& problem);
  void lookUpRecord(const Location& location, Problem& problem);
  void lookUpEnd(ReadStatus status, Problem& problem);

  PageLookup pages_;
};

/// A problem is located in the input; these messages are about a page that is to be written.
bool isAboutResult(const Message& message) {
  return message.code == code::resultNotWritten || message.code == code::noStaves;
}

Problem ProblemFinder::find(const Message& message, std::size_t index, const Location& location) {
  Problem problem;
  problem.code = message.code;
  problem.severity = message.icon;
  problem.message = index;
  if (isAboutResult(message)) {
    return problem;
  }
  problem.system = location.system;
  problem.bar = location.bar;
  problem.staff = asPrinted(location.staff);
  problem.instrument = asPrinted(location.instrument);
  problem.repeats = location.repeats;
  if (location.file.empty()) {
    return problem;
  }
  problem.file = location.file;
  if (message.code == code::structureError) {
    lookUpEnd(ReadStatus::structuralError, problem);
  } else if (location.item != 0) {
    lookUpItem(location.item, problem);
  } else if (isOfRecord(location)) {
    lookUpRecord(location, problem);
  }
  return problem;
}

void ProblemFinder::lookUpItem(int number, Problem& problem) {
  const PageItems& page = pages_.page(*problem.file);
  if (static_cast<std::size_t>(number) > page.items.size()) {
    if (number == page.endPlace.item) {
      lookUpEnd(ReadStatus::tooManyParameters, problem);
    }
    return;
  }
  const PageItems::Entry& entry = page.items[static_cast<std::size_t>(number - 1)];
  problem.place = ItemPlace{number, entry.offset};
  if (!problem.staff) {
    problem.staff = asPrinted(entry.staff);
  }
  if (!problem.instrument) {
    problem.instrument = asPrinted(page.instrumentOf(number));
  }
}

void ProblemFinder::lookUpRecord(const Location& location, Problem& problem) {
  if (const PageItems::Staff* staff = pages_.staffAt(location)) {
    problem.place = staff->place;
  }
}

/// The item that ended the reading of the page.
void ProblemFinder::lookUpEnd(ReadStatus status, Problem& problem) {
  const PageItems& page = pages_.page(*problem.file);
  if (page.end == status) {
    problem.place = page.endPlace;
  }
}

/// Adds the problem, or counts it when it repeats the previous one.
void add(const Problem& problem, std::vector<Problem>& problems) {
  if (!problems.empty() && problem.place) {
    Problem& last = problems.back();
    Problem repeated = problem;
    repeated.repeats = last.repeats;
    if (repeated == last) {
      last.repeats += problem.repeats;
      return;
    }
  }
  problems.push_back(problem);
}

}  // namespace

std::vector<Problem> findProblems(Files& files, const std::vector<Message>& messages) {
  ProblemFinder finder(files);
  std::vector<Problem> problems;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    const Message& message = messages[i];
    for (const Location& place : message.places) {
      add(finder.find(message, i, place), problems);
    }
    if (message.places.empty()) {
      add(finder.find(message, i, message.location), problems);
    }
  }
  return problems;
}

}  // namespace kiv
