# An overlay port that takes the files of the unpacked SDK around it:
#   vcpkg install dialwright --overlay-ports=C:/sdk/dialwright/packaging/vcpkg
# Not run by vcpkg itself here. A test runs this file on its own and builds a project against what it lays out.

get_filename_component(SDK "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
set(BIN "${SDK}/bin/${VCPKG_TARGET_ARCHITECTURE}")
set(LIB "${SDK}/lib/${VCPKG_TARGET_ARCHITECTURE}")

file(INSTALL "${SDK}/include/dialwright" DESTINATION "${CURRENT_PACKAGES_DIR}/include")
# There is one build of the library; vcpkg wants it in both places.
foreach(PREFIX "${CURRENT_PACKAGES_DIR}" "${CURRENT_PACKAGES_DIR}/debug")
  file(INSTALL "${BIN}/Dialwright.dll" "${SDK}/symbols/${VCPKG_TARGET_ARCHITECTURE}/Dialwright.pdb" DESTINATION "${PREFIX}/bin")
  file(INSTALL "${LIB}/Dialwright.lib" "${LIB}/libDialwright.dll.a" DESTINATION "${PREFIX}/lib")
endforeach()
file(INSTALL "${BIN}/dialwright.exe" "${BIN}/dialwright-host.exe" "${BIN}/Dialwright.dll"
     DESTINATION "${CURRENT_PACKAGES_DIR}/tools/dialwright")

set(SHARE "${CURRENT_PACKAGES_DIR}/share/dialwright")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/DialwrightConfig.cmake" "${CMAKE_CURRENT_LIST_DIR}/usage"
             "${SDK}/lib/cmake/Dialwright/DialwrightConfigVersion.cmake" DESTINATION "${SHARE}")
file(WRITE "${SHARE}/copyright" "The Dialwright developers. No licence has been chosen yet by the owner.\n")
