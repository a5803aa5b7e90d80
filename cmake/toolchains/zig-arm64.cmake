set(ZIG_ARCH aarch64)
set(ZIG_PROCESSOR ARM64)
include(${CMAKE_CURRENT_LIST_DIR}/zig.cmake)
