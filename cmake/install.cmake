# What cmake --install gives: the library with its doors, the schema, the two ways to find them
# (find_package and pkg-config), and the bench with its manual page where it is built. Every place is
# told relative to the file that tells it, so that an installed tree can be moved.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(ecf_headers ${CMAKE_INSTALL_INCLUDEDIR}/ecf_dblogger)
set(ecf_data ${CMAKE_INSTALL_DATADIR}/ecf_dblogger)
set(ecf_package ${CMAKE_INSTALL_LIBDIR}/cmake/ecf_dblogger)
set(ecf_pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set_target_properties(ecf_dblogger PROPERTIES EXPORT_NAME dblogger)
set_target_properties(ecf_sqlite PROPERTIES EXPORT_NAME sqlite)
install(TARGETS ecf_dblogger ecf_sqlite EXPORT ecf_dblogger
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${ecf_headers})
install(FILES ${PROJECT_SOURCE_DIR}/sqlite/schema.sql DESTINATION ${ecf_data})

install(EXPORT ecf_dblogger FILE ecf_dblogger-targets.cmake NAMESPACE ecf::
  DESTINATION ${ecf_package})
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/ecf_dblogger-config.cmake.in
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config.cmake
  INSTALL_DESTINATION ${ecf_package} PATH_VARS ecf_data NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config.cmake
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config-version.cmake
  DESTINATION ${ecf_package})

cmake_path(ABSOLUTE_PATH ecf_pkgconfig BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
  OUTPUT_VARIABLE pkgconfig_dir)
foreach(place IN ITEMS INCLUDEDIR LIBDIR DATADIR)
  file(RELATIVE_PATH to_${place} ${pkgconfig_dir} ${CMAKE_INSTALL_FULL_${place}})
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/ecf_dblogger.pc.in
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/ecf_dblogger.pc DESTINATION ${ecf_pkgconfig})

if(TARGET ecf-bancada)
  install(TARGETS ecf-bancada RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_BINARY_DIR}/bancada/ecf-bancada.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
