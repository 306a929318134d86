# The Portuguese messages, checked and compiled by gettext, as a part of the program: it needs neither
# a file beside it nor the machine's locale. Sets catalogue_source, a source for a target of the folder
# that includes this.
find_program(ECF_MSGFMT msgfmt REQUIRED)
set(catalogue ${CMAKE_CURRENT_BINARY_DIR}/pt.mo)
set(catalogue_source ${CMAKE_CURRENT_BINARY_DIR}/pt.cpp)
add_custom_command(
  OUTPUT ${catalogue_source}
  COMMAND ${ECF_MSGFMT} --check -o ${catalogue} ${PROJECT_SOURCE_DIR}/bancada/po/pt.po
  COMMAND ${CMAKE_COMMAND} -DFILE=${catalogue} -DNAME=CATALOGUE_PT
    -DHEADER=bancada/MessageCatalogue.h -DOUT=${catalogue_source}
    -P ${PROJECT_SOURCE_DIR}/cmake/embed.cmake
  DEPENDS ${PROJECT_SOURCE_DIR}/bancada/po/pt.po ${PROJECT_SOURCE_DIR}/cmake/embed.cmake
  VERBATIM)
