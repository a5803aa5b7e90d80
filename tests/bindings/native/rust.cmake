# Rust builds its own programs, the same whatever our own build type, so the release build is enough. Debian's compiler
# with its library for Windows; without them there are no tests of the binding. Its library for ARM64 Windows is in no
# package.
find_program(RUSTC_EXE rustc PATHS /usr/bin NO_DEFAULT_PATH)
find_program(RUST_LINKER x86_64-w64-mingw32-gcc)
if(NOT RUSTC_EXE OR NOT RUST_LINKER OR NOT EXISTS /usr/lib/rustlib/x86_64-pc-windows-gnu
   OR NOT CMAKE_BUILD_TYPE STREQUAL Release OR NOT CMAKE_SYSTEM_PROCESSOR STREQUAL AMD64)
  message(STATUS "No tests of the Rust binding: no Rust for Windows (rustc, libstd-rust-dev-windows), or no x64 release build")
  return()
endif()

set(crate ${PROJECT_SOURCE_DIR}/bindings/rust)
set(rustFolder ${CMAKE_CURRENT_BINARY_DIR}/rust)
file(MAKE_DIRECTORY ${rustFolder})
file(GLOB rustSources CONFIGURE_DEPENDS ${crate}/src/*.rs)
set(RUSTC ${RUSTC_EXE} --edition 2021 --target x86_64-pc-windows-gnu -D warnings -C linker=${RUST_LINKER})

set(rustLibrary ${rustFolder}/libdialwright.rlib)
add_custom_command(
  OUTPUT ${rustLibrary}
  COMMAND ${RUSTC} --crate-type rlib --crate-name dialwright -o ${rustLibrary} ${crate}/src/lib.rs
  DEPENDS ${rustSources}
  VERBATIM)

set(table ${PROJECT_SOURCE_DIR}/tests/bindings/lines.json)
add_custom_command(
  OUTPUT ${rustFolder}/table.rs
  COMMAND ${DIALWRIGHT_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/rust_table.py ${table} ${rustFolder}/table.rs
  DEPENDS rust_table.py ${table}
  VERBATIM)

# rust_program(TARGET SOURCE [OPTION...])
function(rust_program target source)
  set(program ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}.exe)
  add_custom_command(
    OUTPUT ${program}
    COMMAND ${RUSTC} ${ARGN} --crate-name ${target} --extern dialwright=${rustLibrary} -o ${program} ${source}
    DEPENDS ${source} ${rustLibrary}
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${program})
  add_dependencies(${target} dialwright practice_target)
endfunction()
rust_program(rust_unit_tests ${crate}/src/lib.rs --test)
rust_program(rust_table_tests ${rustFolder}/table.rs --test)
rust_program(rust_library_tests ${crate}/tests/library.rs --test)
rust_program(rust_fill_form ${PROJECT_SOURCE_DIR}/examples/rust/fill_form.rs)

function(rust_test name target)
  add_test(NAME RustBinding.${name} COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR}
                                            ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}.exe)
  # A failing test's stack is not readable under Wine, and looking for it can end the program.
  set_tests_properties(RustBinding.${name} PROPERTIES TIMEOUT 120 LABELS bindings ENVIRONMENT RUST_BACKTRACE=0)
endfunction()
if(CMAKE_CROSSCOMPILING_EMULATOR)
  rust_test(ReadsMessagesAndHidesTexts rust_unit_tests)
  rust_test(WritesLinesAsInEveryLanguage rust_table_tests)
  rust_test(CallsTheLibrary rust_library_tests)
endif()
example_test(RustExample.FillsInAFormAndSaysWhyALineFails ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/rust_fill_form.exe)
