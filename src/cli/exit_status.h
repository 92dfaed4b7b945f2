#pragma once
// The exit statuses of fplc: the contract for scripts and editors.

// Compiled; warnings are allowed.
inline constexpr int exitStatusOk = 0;
// A fatal fault, a timetable file not written, or warnings under --werror.
inline constexpr int exitStatusFailed = 1;
// A usage error, an unreadable definition file, or --root without the marker.
inline constexpr int exitStatusUsage = 2;
