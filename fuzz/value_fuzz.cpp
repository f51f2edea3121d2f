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
    for (const Value_type type :
         {Value_type::boolean, Value_type::integer, Value_type::float1, Value_type::vector2,
          Value_type::vector3, Value_type::vector4, Value_type::color3, Value_type::color4,
          Value_type::matrix33, Value_type::matrix44, Value_type::string, Value_type::filename})
        parse_value(type, text);
    std::string reason;
    parse_light(text, reason);
    return 0;
}
