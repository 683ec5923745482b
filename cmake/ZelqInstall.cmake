# Install rules: libraries, public headers, command-line programs, the CMake
# package (find_package(Zelq CONFIG) -> Zelq::zelq, Zelq::zelqcpp) and the
# pkg-config files. Tests, benchmarks and internal archives stay out.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(ZELQ_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/Zelq CACHE STRING
  "Where the CMake package files go, relative to the prefix")
mark_as_advanced(ZELQ_INSTALL_CMAKEDIR)

# The installed tree is relocatable: libraries find each other next to
# themselves, programs find the libraries from the bin directory, and the
# Debian solver libraries come from the system's own search path.
file(RELATIVE_PATH _zelq_bin_to_lib
  ${CMAKE_BINARY_DIR}/_p/${CMAKE_INSTALL_BINDIR} ${CMAKE_BINARY_DIR}/_p/${CMAKE_INSTALL_LIBDIR})
set_target_properties(zelq zelqcpp PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS zelq zelqcpp EXPORT ZelqTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(_zelq_programs zelq-solve)
if(TARGET zelq-cli)
  list(APPEND _zelq_programs zelq-cli)
endif()
set_target_properties(${_zelq_programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${_zelq_bin_to_lib}")
install(TARGETS ${_zelq_programs} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zelq
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" PATTERN "*.inc")

install(EXPORT ZelqTargets NAMESPACE Zelq:: DESTINATION ${ZELQ_INSTALL_CMAKEDIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZelqConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/ZelqConfig.cmake
  INSTALL_DESTINATION ${ZELQ_INSTALL_CMAKEDIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZelqConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZelqConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/ZelqConfigVersion.cmake
  DESTINATION ${ZELQ_INSTALL_CMAKEDIR})

# pkg-config files locate the prefix from their own directory, so the tree
# may be installed with `cmake --install --prefix` anywhere and moved later.
file(RELATIVE_PATH ZELQ_PC_TO_PREFIX
  ${CMAKE_BINARY_DIR}/_p/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_BINARY_DIR}/_p)
string(REGEX REPLACE "/$" "" ZELQ_PC_TO_PREFIX "${ZELQ_PC_TO_PREFIX}")
foreach(_pc zelq zelqcpp)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${_pc}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${_pc}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${_pc}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
