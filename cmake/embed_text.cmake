# Run as a script: writes the bytes of TEXT as the NUL-terminated array NAME (in the namespace
# QZ::TOVIRAEXPORT, declared in HEADER) into the C++ source OUTPUT.
file(READ "${TEXT}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
string(REGEX REPLACE "(('[^']+',){16})" "\\1\n" bytes "${bytes}")
file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

namespace QZ
{
namespace TOVIRAEXPORT
{

extern const char ${NAME}[] = {
${bytes}'\\0'};

} // namespace TOVIRAEXPORT
} // namespace QZ
")
