# Writes a C++ source that holds a text file, so that a program needs no copy of it beside itself:
#   cmake -D INPUT=file -D OUTPUT=file.cpp -D NAME=Symbol -P EmbedText.cmake
file(READ "${INPUT}" text)
get_filename_component(input_name "${INPUT}" NAME)
file(WRITE "${OUTPUT}" "// Made from ${input_name} by the build.
namespace bancada
{
extern const char ${NAME}[];
const char ${NAME}[] = R\"TEXT(${text})TEXT\";
} // namespace bancada
")
