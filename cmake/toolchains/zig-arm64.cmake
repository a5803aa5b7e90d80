set(ZIG_ARCH aarch64)
set(ZIG_PROCESSOR ARM64)
include(${CMAKE_CURRENT_LIST_DIR}/zig.cmake)
# Tests are Windows programs for another processor. The script starts them in a Wine under an emulator, which is slow.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine-run-arm64)
set(DIALWRIGHT_EMULATED ON)
