set(ZIG_ARCH x86_64)
set(ZIG_PROCESSOR AMD64)
include(${CMAKE_CURRENT_LIST_DIR}/zig.cmake)
# Tests are Windows programs. The script starts them in the project's own Wine prefix.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run)
