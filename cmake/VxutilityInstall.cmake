# Installation: both libraries, their headers, a CMake package and a
# pkg-config file.

install(TARGETS vxbase vxutility EXPORT vxutilityTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/vxutility ${CMAKE_CURRENT_BINARY_DIR}/include/vxutility
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY vxbase/include/vxbase ${CMAKE_CURRENT_BINARY_DIR}/vxbase/include/vxbase
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
if(VXUTILITY_TOOLS)
  install(TARGETS vxutil RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(VXUTILITY_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vxutility)
install(EXPORT vxutilityTargets NAMESPACE vxutility:: DESTINATION ${VXUTILITY_CMAKE_DIR})
configure_package_config_file(cmake/vxutilityConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/vxutilityConfig.cmake
  INSTALL_DESTINATION ${VXUTILITY_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vxutilityConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vxutilityConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/vxutilityConfigVersion.cmake
  DESTINATION ${VXUTILITY_CMAKE_DIR})

configure_file(cmake/vxutility.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vxutility.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vxutility.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
