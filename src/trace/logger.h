#pragma once

namespace dialwright {

/// Starts the process-wide logger. `directory` ends in "\"; "%localappdata%" (in any case) stands for the user's local
/// application data; null or empty is "logs\trace\" beside the host program. `fileName` is a plain file name; without
/// one no file is ever written. Narrow texts in UTF-8 or in the ANSI code page; they are copied. 1 when the logger runs
/// (last error 183 when it did already), 0 with a last error: 21 for a directory without a final "\", 87 for no logger
/// name. Opens no file yet. May load a system library for "%localappdata%". Not for two threads at once, nor beside
/// TraceStop.
int TraceStart(const char* directory, const char* fileName, const char* loggerName) noexcept;

/// Writes "trace stopped" and all that is buffered, ends the watcher and stops the logger; does nothing to one that is
/// stopped. Blocks for a little more than 100 ms. Leaves the files open, until they are chosen anew or the library is
/// unloaded. Lines of other threads are dropped from here on.
void TraceStop() noexcept;

/// The same for a process that is about to be dumped: the memory log stays, so that the dump holds it.
void TraceStopForDump() noexcept;

/// For the unloading library, after TraceStop: closes the files, removes the crash filter if it is ours, and gives back
/// whatever else would outlive the image.
void ReleaseTrace() noexcept;

/// In place of TraceStop when the process ends: the other threads are gone and may have left any lock behind. Waits for
/// nothing, calls neither the C runtime nor another library, and writes "trace stopped" and what is buffered.
void TraceStopAtExit() noexcept;

/// The registry key under HKEY_LOCAL_MACHINE that is polled for settings from now on, until the logger is stopped.
/// Nothing in the library sets one. Does nothing while the logger is stopped.
void SetTraceSettingsKey(const char* keyPath) noexcept;

/// Reads the settings key once and puts what has changed into force, as the watcher does every 11 seconds.
/// Does nothing without a key, or while the logger is stopped.
void PollTraceSettings() noexcept;

}  // namespace dialwright
