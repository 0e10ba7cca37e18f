#pragma once

// Exit statuses of the program besides the interface's own.
namespace platform {

inline constexpr int cannotRun = 1; // or the running host refuses a request, or does not answer
inline constexpr int unclearCommand = 2;
inline constexpr int noHostRuns = 3;
inline constexpr int somethingDegraded = 4; // of --check: the worst that it found
inline constexpr int somethingMissing = 5;

} // namespace platform
