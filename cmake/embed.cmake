# Writes the bytes of a file as a C++ array.
#
# cmake -DFILE=FILE -DNAME=NAME -DHEADER=HEADER -DOUT=SOURCE -P embed.cmake
file(READ "${FILE}" bytes HEX)
string(LENGTH "${bytes}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(................................)" "\\1\n    " bytes "${bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${OUT}" "#include \"${HEADER}\"

namespace bancada
{

const unsigned char ${NAME}[] = {
    ${bytes}
};
const std::size_t ${NAME}_SIZE = ${size};

} // namespace bancada
")
