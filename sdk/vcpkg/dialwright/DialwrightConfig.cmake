# As vcpkg lays a package out: one architecture a tree.
get_filename_component(_dialwright_root "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
set(_dialwright_implib Dialwright.lib)
if(MINGW)
  set(_dialwright_implib libDialwright.dll.a)
endif()
if(NOT TARGET Dialwright::Dialwright)
  add_library(Dialwright::Headers INTERFACE IMPORTED)
  set_target_properties(Dialwright::Headers PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${_dialwright_root}/include")
  add_library(Dialwright::Dialwright SHARED IMPORTED)
  set_target_properties(
    Dialwright::Dialwright
    PROPERTIES IMPORTED_LOCATION "${_dialwright_root}/bin/Dialwright.dll"
               IMPORTED_IMPLIB "${_dialwright_root}/lib/${_dialwright_implib}"
               INTERFACE_INCLUDE_DIRECTORIES "${_dialwright_root}/include")
endif()
unset(_dialwright_root)
unset(_dialwright_implib)
