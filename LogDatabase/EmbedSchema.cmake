# Writes the C++ source that holds the schema, its columns and its tables, so that a program needs no
# copy of the file beside itself and none of it is written twice:
#   cmake -D INPUT=schema.sql -D OUTPUT=file.cpp -P EmbedSchema.cmake
# A column that a later version of the schema has first says so behind itself: "-- since version 2".
file(READ "${INPUT}" text)
file(STRINGS "${INPUT}" lines ENCODING UTF-8)
set(tables)
set(table)
foreach(line IN LISTS lines)
  if(line MATCHES "^CREATE TABLE ([a-z_]+) \\($")
    set(table ${CMAKE_MATCH_1})
    list(APPEND tables ${table})
    set(columns_${table})
  elseif(line MATCHES "^\\)")
    set(table)
  elseif(table AND line MATCHES "^  ([a-z_]+) ")
    set(column ${CMAKE_MATCH_1})
    set(since 0)
    if(line MATCHES "-- since version ([0-9]+)$")
      set(since ${CMAKE_MATCH_1})
    endif()
    list(APPEND columns_${table} "\"${column}\", ${since}")
  endif()
endforeach()
list(SORT tables)

set(column_lines)
set(table_lines)
foreach(table IN LISTS tables)
  string(APPEND table_lines "    \"${table}\",\n")
  foreach(column IN LISTS columns_${table})
    string(APPEND column_lines "    {\"${table}\", ${column}},\n")
  endforeach()
endforeach()

get_filename_component(input_name "${INPUT}" NAME)
file(WRITE "${OUTPUT}" "// Made from ${input_name} by the build.
#include \"LogDatabase/Schema.h\"

namespace log_database
{
const char LOG_SCHEMA[] = R\"TEXT(${text})TEXT\";
const LogColumn LOG_COLUMNS[] = {
${column_lines}};
const int LOG_COLUMN_COUNT = sizeof LOG_COLUMNS / sizeof LOG_COLUMNS[0];
const char* const LOG_TABLES[] = {
${table_lines}};
const int LOG_TABLE_COUNT = sizeof LOG_TABLES / sizeof LOG_TABLES[0];
} // namespace log_database
")
