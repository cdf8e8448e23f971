# Headers, library, CMake package and pkg-config file. The installed tree can be moved: nothing in it names the prefix.

include(CMakePackageConfigHelpers)

install(
    TARGETS truearc
    EXPORT truearcTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_BINARY_DIR}/generated/include/geometry/version.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/geometry)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/truearc)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/truearcConfig.cmake.in ${PROJECT_BINARY_DIR}/generated/truearcConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/generated/truearcConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(EXPORT truearcTargets NAMESPACE truearc:: DESTINATION ${package_dir})
install(FILES ${PROJECT_BINARY_DIR}/generated/truearcConfig.cmake
              ${PROJECT_BINARY_DIR}/generated/truearcConfigVersion.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH TRUEARC_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
if(NOT BUILD_SHARED_LIBS)
    set(TRUEARC_PC_CFLAGS -DGEOMETRY_STATIC)
    set(TRUEARC_PC_LIBS "-pthread -lstdc++ -lm")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/truearc.pc.in ${PROJECT_BINARY_DIR}/generated/truearc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/generated/truearc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
