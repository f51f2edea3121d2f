// Any bytes as a value of every type and as the description of a light.
#include "reference_host/document/value_parser.h"
#include "reference_host/host/light_request.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace reference_host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const Type type :
         {Type::boolean, Type::integer, Type::float1, Type::vector2, Type::vector3, Type::vector4,
          Type::color3, Type::color4, Type::matrix33, Type::matrix44, Type::string, Type::filename})
        parse_value(type, text);
    std::string reason;
    parse_light(text, reason);
    return 0;
}
