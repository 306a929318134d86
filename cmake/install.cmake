# What cmake --install gives, in two components. The library: the archives with their doors, the schema,
# the documents and the two ways to find them (find_package and pkg-config). The bench, where it is
# built: the program, its manual page and the documents that the page names. Every place is told
# relative to the file that tells it, so that an installed tree can be moved.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(ecf_headers ${CMAKE_INSTALL_INCLUDEDIR}/ecf_dblogger)
set(ecf_data ${CMAKE_INSTALL_DATADIR}/ecf_dblogger)
set(ecf_package ${CMAKE_INSTALL_LIBDIR}/cmake/ecf_dblogger)
set(ecf_pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set_target_properties(ecf_dblogger PROPERTIES EXPORT_NAME dblogger)
set_target_properties(ecf_logdatabase PROPERTIES EXPORT_NAME logdatabase)
set_target_properties(ecf_sqlite PROPERTIES EXPORT_NAME sqlite)
install(TARGETS ecf_dblogger ecf_logdatabase ecf_sqlite EXPORT ecf_dblogger
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
  FILE_SET HEADERS DESTINATION ${ecf_headers} COMPONENT library)
install(FILES ${PROJECT_SOURCE_DIR}/sqlite/schema.sql DESTINATION ${ecf_data} COMPONENT library)

# Each component has the documents whole: they name one another.
set(ecf_documents ${CMAKE_INSTALL_DATAROOTDIR}/doc)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${ecf_documents}/libecf-dblogger-dev
  COMPONENT library)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/firmware
  DESTINATION ${ecf_documents}/libecf-dblogger-dev/examples COMPONENT library)

install(EXPORT ecf_dblogger FILE ecf_dblogger-targets.cmake NAMESPACE ecf::
  DESTINATION ${ecf_package} COMPONENT library)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/ecf_dblogger-config.cmake.in
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config.cmake
  INSTALL_DESTINATION ${ecf_package} PATH_VARS ecf_data NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config.cmake
  ${PROJECT_BINARY_DIR}/package/ecf_dblogger-config-version.cmake
  DESTINATION ${ecf_package} COMPONENT library)

cmake_path(ABSOLUTE_PATH ecf_pkgconfig BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
  OUTPUT_VARIABLE pkgconfig_dir)
foreach(place IN ITEMS INCLUDEDIR LIBDIR DATADIR)
  file(RELATIVE_PATH to_${place} ${pkgconfig_dir} ${CMAKE_INSTALL_FULL_${place}})
endforeach()
foreach(library IN ITEMS dblogger logdatabase)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/ecf_${library}.pc.in
    ${PROJECT_BINARY_DIR}/package/ecf_${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/ecf_${library}.pc DESTINATION ${ecf_pkgconfig}
    COMPONENT library)
endforeach()

if(TARGET ecf-bancada)
  install(TARGETS ecf-bancada RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT bench)
  install(FILES ${PROJECT_BINARY_DIR}/bancada/man/en/ecf-bancada.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT bench)
  install(FILES ${PROJECT_BINARY_DIR}/bancada/man/pt/ecf-bancada.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/pt/man1 COMPONENT bench)
  install(FILES ${PROJECT_SOURCE_DIR}/bancada/completion/ecf-bancada
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT bench)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${ecf_documents}/ecf-bancada
    COMPONENT bench)
  file(GLOB tapes ${PROJECT_SOURCE_DIR}/examples/*.jsonl)
  install(FILES ${tapes} ${PROJECT_SOURCE_DIR}/examples/README.md
    DESTINATION ${ecf_documents}/ecf-bancada/examples COMPONENT bench)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/package.cmake)
