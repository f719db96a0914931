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
/// `screen:N,` or `screen:N-M,` writes those steps' screens to standard output.
inline constexpr char REPLAY_OPTIONS_VARIABLE[] = "SELVANE_REPLAY_OPTIONS";

/// The file for a film of the replay.
inline constexpr char REPLAY_FILM_VARIABLE[] = "SELVANE_REPLAY_FILM";
/// The file for the verdict, which otherwise goes to standard output: a line with 0 if all steps
/// were the same, 1 if one differs, 2 if the film could not be written, and the sentences.
inline constexpr char REPLAY_REPORT_VARIABLE[] = "SELVANE_REPLAY_REPORT";

// Called by the engine.

/// Before the settings are read: 0, or -1 if there is no such record.
int prepareRecords();

/// After they were read.
void beginRecords();

/// Whether the settings or the environment have a record written or played now.
bool isWholeGameRecorded();

/// Ends what is recorded or played, so that the next start is like the process's first.
void resetRecords();

} // namespace sv
