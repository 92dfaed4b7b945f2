# Install rules: the library with its public headers, the CMake package
# (find_package(fplc) -> fplc::fpl), the pkg-config file fplc.pc, the front-end
# programs that were built, the documentation and the man page.
include(CMakePackageConfigHelpers)

set(FPLC_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/fplc)

install(TARGETS fplc_library EXPORT fplcTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_BINARY_DIR}/include/fplc DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT fplcTargets NAMESPACE fplc:: DESTINATION ${FPLC_PACKAGE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/fplcConfig.cmake.in
  ${PROJECT_BINARY_DIR}/fplcConfig.cmake
  INSTALL_DESTINATION ${FPLC_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/fplcConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/fplcConfig.cmake ${PROJECT_BINARY_DIR}/fplcConfigVersion.cmake
  DESTINATION ${FPLC_PACKAGE_DIR})

# fplc.pc finds its prefix from its own place, so that `cmake --install --prefix`
# and copies of the installation stay right.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(FPLC_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(FPLC_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(FPLC_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
  file(RELATIVE_PATH FPLC_PC_UP "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" FPLC_PC_UP "${FPLC_PC_UP}")
  set(FPLC_PC_PREFIX "\${pcfiledir}/${FPLC_PC_UP}")
  set(FPLC_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(FPLC_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/fplc.pc.in ${PROJECT_BINARY_DIR}/fplc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/fplc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}
  FILES_MATCHING PATTERN "*.md")
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Programs are installed at the end of the configure, so that the rule finds every
# front-end, wherever in CMakeLists.txt it is defined.
function(fplc_install_programs)
  foreach(program IN ITEMS fplc fplc-lsp)
    if(TARGET ${program})
      install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
  endforeach()
  if(TARGET fplc)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/fplc.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()
endfunction()
cmake_language(DEFER DIRECTORY ${PROJECT_SOURCE_DIR} CALL fplc_install_programs)
