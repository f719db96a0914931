/// What a process gets from whoever started it: standard input, output and errors, and signals.
#pragma once

namespace sv::platform {

/// Opens the null device for each standard descriptor that is closed. Otherwise the next file or
/// socket would take its number, and what libraries write to standard error would go into it.
void openStandardDescriptors();

/// From now on the first SIGINT, SIGTERM or SIGHUP only raises stopSignal(); a second one ends the
/// process at once. Those that the program handles or ignores itself are left alone. Writing to a
/// pipe that nobody reads is an error from now on, and no signal.
void catchStopSignals();

/// Later ones end the process again.
void releaseStopSignals();

/// The signal that asked the process to stop, or 0. It stays until forgetStopSignal().
int stopSignal();

void forgetStopSignal();

} // namespace sv::platform
