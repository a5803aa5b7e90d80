#pragma once

// What the pure parts take from the platform's header, for a build without it: types, and the few calls that stand in
// the same sources as pure code. A pipe is a text in memory, no file exists, no variable is set.

#include <cstdarg>
#include <cstdint>
#include <string>

using BOOL = int;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using HANDLE = void*;
using HWND = struct Hwnd*;
using PTP_WORK = struct Work*;
using PTP_CALLBACK_INSTANCE = struct CallbackInstance*;
#define CALLBACK

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline const auto INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~std::uintptr_t{0});

struct SYSTEMTIME {
    WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};
struct CRITICAL_SECTION {};

inline BOOL InitializeCriticalSectionAndSpinCount(CRITICAL_SECTION*, DWORD) { return TRUE; }
inline void DeleteCriticalSection(CRITICAL_SECTION*) {}
inline void EnterCriticalSection(CRITICAL_SECTION*) {}
inline BOOL TryEnterCriticalSection(CRITICAL_SECTION*) { return TRUE; }
inline void LeaveCriticalSection(CRITICAL_SECTION*) {}

inline DWORD GetCurrentProcessId() { return 4312; }
inline DWORD GetCurrentThreadId() { return 8876; }

/// What a HANDLE of ReadFile and WriteFile points to.
struct MemoryPipe {
    std::string bytes;
    std::size_t read = 0;
};
BOOL ReadFile(HANDLE pipe, void* data, DWORD size, DWORD* read, void*);
BOOL WriteFile(HANDLE pipe, const void* data, DWORD size, DWORD* written, void*);

inline DWORD GetEnvironmentVariableW(const wchar_t*, wchar_t*, DWORD) { return 0; }

struct FILETIME {
    DWORD dwLowDateTime, dwHighDateTime;
};
struct WIN32_FIND_DATAW {
    wchar_t cFileName[260];
};
struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD nFileSizeHigh, nFileSizeLow;
    FILETIME ftLastWriteTime;
};
enum { GetFileExInfoStandard };
inline HANDLE FindFirstFileW(const wchar_t*, WIN32_FIND_DATAW*) { return INVALID_HANDLE_VALUE; }
inline BOOL FindNextFileW(HANDLE, WIN32_FIND_DATAW*) { return FALSE; }
inline BOOL FindClose(HANDLE) { return TRUE; }
inline DWORD GetFileAttributesW(const wchar_t*) { return INVALID_FILE_ATTRIBUTES; }
inline BOOL GetFileAttributesExW(const wchar_t*, int, WIN32_FILE_ATTRIBUTE_DATA*) { return FALSE; }

using _locale_t = void*;
constexpr std::size_t _TRUNCATE = ~std::size_t{0};
inline _locale_t _create_locale(int, const char*) { return nullptr; }
inline void _free_locale(_locale_t) {}
/// The text's length, -1 where it was cut.
int _vsnprintf_s_l(char* buffer, std::size_t units, std::size_t, const char* format, _locale_t, std::va_list);
int _vsnwprintf_s_l(wchar_t* buffer, std::size_t units, std::size_t, const wchar_t* format, _locale_t, std::va_list);
