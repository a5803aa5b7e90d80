# find_package(Dialwright CONFIG) gives
#   Dialwright::Dialwright  the library, by its import library: link it, and copy $<TARGET_RUNTIME_DLLS:your_target>
#   Dialwright::Headers     the headers alone, for programs that load the library with dialwright_loader.h
# and sets DIALWRIGHT_BIN_DIR, where the DLL and its programs for the target's architecture are.
# The package may lie anywhere.

get_filename_component(_dialwright_root "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

# The compiler knows best what it compiles for; CMAKE_SYSTEM_PROCESSOR is the host's where nobody set it.
set(_dialwright_architecture "")
foreach(_dialwright_hint "${CMAKE_CXX_COMPILER_ARCHITECTURE_ID}" "${CMAKE_C_COMPILER_ARCHITECTURE_ID}"
                         "${CMAKE_GENERATOR_PLATFORM}" "${CMAKE_CXX_COMPILER_TARGET}" "${CMAKE_C_COMPILER_TARGET}"
                         "${CMAKE_SYSTEM_PROCESSOR}")
  string(TOLOWER "${_dialwright_hint}" _dialwright_hint)
  if(_dialwright_hint MATCHES "^(arm64|aarch64)")
    set(_dialwright_architecture arm64)
  elseif(_dialwright_hint MATCHES "^(x64|amd64|x86_64)")
    set(_dialwright_architecture x64)
  elseif(_dialwright_hint)
    set(_dialwright_architecture "${_dialwright_hint}")
  endif()
  if(_dialwright_architecture)
    break()
  endif()
endforeach()

set(DIALWRIGHT_BIN_DIR "${_dialwright_root}/bin/${_dialwright_architecture}")
set(_dialwright_lib "${_dialwright_root}/lib/${_dialwright_architecture}")
if(MINGW OR NOT EXISTS "${_dialwright_lib}/Dialwright.lib")
  set(_dialwright_implib "${_dialwright_lib}/libDialwright.dll.a")
else()
  set(_dialwright_implib "${_dialwright_lib}/Dialwright.lib")
endif()

if(NOT WIN32)
  set(Dialwright_FOUND FALSE)
  set(Dialwright_NOT_FOUND_MESSAGE "Dialwright is for Windows; this build is for ${CMAKE_SYSTEM_NAME}.")
elseif(NOT EXISTS "${DIALWRIGHT_BIN_DIR}/Dialwright.dll" OR NOT EXISTS "${_dialwright_implib}")
  set(Dialwright_FOUND FALSE)
  set(Dialwright_NOT_FOUND_MESSAGE
      "This package has no Dialwright for '${_dialwright_architecture}': it looked for ${DIALWRIGHT_BIN_DIR}/Dialwright.dll and ${_dialwright_implib}."
  )
elseif(NOT TARGET Dialwright::Dialwright)
  add_library(Dialwright::Headers INTERFACE IMPORTED)
  set_target_properties(Dialwright::Headers PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${_dialwright_root}/include")
  add_library(Dialwright::Dialwright SHARED IMPORTED)
  set_target_properties(
    Dialwright::Dialwright
    PROPERTIES IMPORTED_LOCATION "${DIALWRIGHT_BIN_DIR}/Dialwright.dll"
               IMPORTED_IMPLIB "${_dialwright_implib}"
               INTERFACE_INCLUDE_DIRECTORIES "${_dialwright_root}/include")
endif()

unset(_dialwright_root)
unset(_dialwright_architecture)
unset(_dialwright_hint)
unset(_dialwright_lib)
unset(_dialwright_implib)
