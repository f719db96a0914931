/// Records that nobody has to program: what the settings and the environment ask for when the
/// engine starts. docs/replay.md says how to use them.
#pragma once

namespace sv {

/// The file to write a record into; wins over the setting "record".
inline constexpr char RECORD_VARIABLE[] = "SELVANE_RECORD";
/// The record to play.
inline constexpr char REPLAY_VARIABLE[] = "SELVANE_REPLAY";
/// How to play it, as settings: `headless:true,` as fast as it goes and without a window;
/// `last_step:N,` ends it there, and `live:true,` then goes on with the real input;
/// `screen:N,` or `screen:N-M,` writes those steps' screens to standard output;
/// `cast:FILE,` makes a film of it; `report:FILE,` gets the verdict.
inline constexpr char REPLAY_OPTIONS_VARIABLE[] = "SELVANE_REPLAY_OPTIONS";

// Called by the engine.

/// Before the settings are read: 0, or -1 if there is no such record.
int prepareRecords();

/// After they were read.
void beginRecords();

/// Ends what is recorded or played, so that the next start is like the process's first.
void resetRecords();

} // namespace sv
