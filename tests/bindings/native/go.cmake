# Go builds its own programs, the same whatever our own build type, so the release builds are enough. Without Go there are
# no tests of its binding.
find_program(GO_EXE go)
if(NOT GO_EXE OR NOT CMAKE_BUILD_TYPE STREQUAL Release)
  message(STATUS "No tests of the Go binding: no Go (golang-go), or no release build")
  return()
endif()

set(goCache $ENV{DIALWRIGHT_CACHE})
if(NOT goCache)
  set(goCache $ENV{HOME}/.cache/dialwright)
endif()
string(TOLOWER ${CMAKE_SYSTEM_PROCESSOR} goArchitecture)
set(GO ${CMAKE_COMMAND} -E env GOOS=windows GOARCH=${goArchitecture} CGO_ENABLED=0 GOCACHE=${goCache}/go GOPROXY=off
       "GOFLAGS=-mod=readonly -buildvcs=false" ${GO_EXE})

# go_program(TARGET FOLDER COMMAND...): checks the folder and builds a program of it, again when a source has changed.
file(GLOB goSources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bindings/go/*.go ${PROJECT_SOURCE_DIR}/examples/go/*.go)
function(go_program target folder)
  set(program ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${target}.exe)
  add_custom_command(
    OUTPUT ${program}
    COMMAND ${GO} vet .
    COMMAND ${GO} ${ARGN} -o ${program} .
    DEPENDS ${goSources} ${PROJECT_SOURCE_DIR}/${folder}/go.mod
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/${folder}
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${program})
  add_dependencies(${target} dialwright practice_target)
endfunction()
go_program(go_binding_tests bindings/go test -c)
go_program(go_fill_form examples/go build)

find_program(GOFMT_EXE gofmt)
add_test(NAME GoBinding.IsFormatted COMMAND ${CMAKE_COMMAND} -D GOFMT=${GOFMT_EXE} -D "FILES=${goSources}" -P
                                            ${CMAKE_CURRENT_LIST_DIR}/check_gofmt.cmake)
set_tests_properties(GoBinding.IsFormatted PROPERTIES TIMEOUT 60 LABELS bindings)

if(CMAKE_CROSSCOMPILING_EMULATOR OR CMAKE_HOST_WIN32)
  add_test(
    NAME GoBinding.WritesLinesAndCallsTheLibrary
    COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/go_binding_tests.exe -test.v
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/bindings/go)
  set_tests_properties(GoBinding.WritesLinesAndCallsTheLibrary PROPERTIES TIMEOUT ${DIALWRIGHT_TEST_TIMEOUT} LABELS bindings)
endif()
example_test(GoExample.FillsInAFormAndSaysWhyALineFails ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/go_fill_form.exe)
