// The kinds of lights that a scene may have.
#ifndef REFERENCE_HOST_DOCUMENT_LIGHT_KIND_H
#define REFERENCE_HOST_DOCUMENT_LIGHT_KIND_H

#include <string_view>

namespace reference_host
{

// With their codes at the border to the plug-in.
enum class Light_kind { directional = 0, point = 1, spot = 2 };

struct Light_kind_row {
    Light_kind kind;
    const char* word;     // on the command line
    const char* category; // of its nodes; the library's function of the same name computes it
};

// In the order of the codes.
constexpr Light_kind_row light_kinds[] = {
    {Light_kind::directional, "directional", "directional_light"},
    {Light_kind::point, "point", "point_light"},
    {Light_kind::spot, "spot", "spot_light"},
};

constexpr const Light_kind_row& row_of(Light_kind kind)
{
    return light_kinds[static_cast<int>(kind)];
}

// Null when nodes of this category are not lights.
inline const Light_kind_row* find_light_category(std::string_view category)
{
    for (const Light_kind_row& row : light_kinds)
        if (category == row.category)
            return &row;
    return nullptr;
}

} // namespace reference_host

#endif
