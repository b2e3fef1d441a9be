#pragma once

#include <string>

namespace kiv {

/// Whether the same signal a second time ends the program at once.
enum class SecondSignal { isNoted, endsProgram };

/// From now on the signals INT, TERM and HUP are only noted, to be asked for where a run can be stopped; those that the
/// program was started to ignore stay ignored. Where the second signal is noted as well, output to a pipe that nobody
/// reads any more fails, and ends nothing.
void noteStopSignals(SecondSignal second);
/// From now on a file that would grow beyond the limit of its size cannot be written, which ends nothing. The signal
/// for that, XFSZ, counts as one that stops the program only when another process sent it.
void noteFileSizeSignal();
/// Whether a noted signal ends reading what the user types.
void letSignalsEndReading(bool yes);

/// The signal that has asked the program to stop; 0 when there was none.
int stopSignal();
/// "SIGTERM"
std::string signalName(int signal);

/// A point where a run can be stopped: ends the program with status 128 + signal when a signal has asked for that. It
/// does so once; what is to be done before the program is gone is not stopped.
void endIfStopped();
/// From now on endIfStopped ends nothing: the run itself asks for the signal, and finishes what it has begun.
void finishWhenStopped();
/// Whether endIfStopped has ended the run.
bool hasStopped();

}  // namespace kiv
