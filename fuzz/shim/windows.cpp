#include "platform/windows.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

BOOL ReadFile(HANDLE pipe, void* data, DWORD size, DWORD* read, void*) {
    auto& memory = *static_cast<MemoryPipe*>(pipe);
    *read = static_cast<DWORD>((std::min)(std::size_t{size}, memory.bytes.size() - memory.read));
    std::copy_n(memory.bytes.data() + memory.read, *read, static_cast<char*>(data));
    memory.read += *read;
    return TRUE;
}

BOOL WriteFile(HANDLE pipe, const void* data, DWORD size, DWORD* written, void*) {
    static_cast<MemoryPipe*>(pipe)->bytes.append(static_cast<const char*>(data), size);
    *written = size;
    return TRUE;
}

int _vsnprintf_s_l(char* buffer, std::size_t units, std::size_t, const char* format, _locale_t, std::va_list values) {
    const int length = std::vsnprintf(buffer, units, format, values);
    return length >= 0 && static_cast<std::size_t>(length) < units ? length : -1;
}

int _vsnwprintf_s_l(wchar_t* buffer, std::size_t units, std::size_t, const wchar_t* format, _locale_t,
                    std::va_list values) {
    return std::vswprintf(buffer, units, format, values);
}
