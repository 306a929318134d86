# The two Debian packages that cpack makes of a build: the libraries with their headers, and the bench
# with its manual page.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The maintainers <root@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Logging database of a fiscal register")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL library bench)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libecf-dblogger-dev)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "libsqlite3-dev (>= ${ECF_SQLITE_MINIMUM})")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
  "Static libraries and headers that mirror a fiscal register's commands into a database.")

set(CPACK_DEBIAN_BENCH_PACKAGE_NAME ecf-bancada)
set(CPACK_DEBIAN_BENCH_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_BENCH_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_BENCH_DESCRIPTION
  "Test bench that runs command tapes, and shows and checks logging databases.")

include(CPack)
