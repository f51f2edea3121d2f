// The values that the host fills: what code calls them, and what effects do.
#ifndef REFERENCE_HOST_SHADING_HOST_VALUES_H
#define REFERENCE_HOST_SHADING_HOST_VALUES_H

#include "reference_host/shading/types.h"

#include <cstddef>

namespace reference_host
{

// Matrices and the time. The variable has the value's name.
enum class Host_value {
    world_view_projection,
    world_view,
    world_view_it,
    world,
    world_it,
    world_inverse,
    world_view_inverse,
    world_view_projection_inverse,
    view_matrix,
    view_inverse,
    view_projection,
    view_projection_inverse,
    projection,
    projection_inverse,
    time,
    none
};

struct Host_value_row {
    Host_value value;
    const char* name;
    Base_type type;
    const char* semantic;    // in effects
    const char* sas_address; // the Standard Annotations and Semantics of DirectX; may be empty
};

// In the order of the enumeration.
constexpr Host_value_row host_values[] = {
    {Host_value::world_view_projection, "world_view_projection", Base_type::matrix4,
     "WORLDVIEWPROJECTION", "Sas.Camera.ObjectToProjection"},
    {Host_value::world_view, "world_view", Base_type::matrix4, "WORLDVIEW",
     "Sas.Camera.ObjectToView"},
    {Host_value::world_view_it, "world_view_it", Base_type::matrix4, "WORLDVIEWINVERSETRANSPOSE",
     ""},
    {Host_value::world, "world", Base_type::matrix4, "WORLD", "Sas.Skeleton.MeshToJointToWorld[0]"},
    {Host_value::world_it, "world_it", Base_type::matrix4, "WORLDINVERSETRANSPOSE", ""},
    {Host_value::world_inverse, "world_inverse", Base_type::matrix4, "WORLDINVERSE", ""},
    {Host_value::world_view_inverse, "world_view_inverse", Base_type::matrix4, "WORLDVIEWINVERSE",
     ""},
    {Host_value::world_view_projection_inverse, "world_view_projection_inverse", Base_type::matrix4,
     "WORLDVIEWPROJECTIONINVERSE", ""},
    {Host_value::view_matrix, "view_matrix", Base_type::matrix4, "VIEW", "Sas.Camera.WorldToView"},
    {Host_value::view_inverse, "view_inverse", Base_type::matrix4, "VIEWINVERSE",
     "Sas.Camera.ViewToWorld"},
    {Host_value::view_projection, "view_projection", Base_type::matrix4, "VIEWPROJECTION",
     "Sas.Camera.WorldToProjection"},
    {Host_value::view_projection_inverse, "view_projection_inverse", Base_type::matrix4,
     "VIEWPROJECTIONINVERSE", ""},
    {Host_value::projection, "projection", Base_type::matrix4, "PROJECTION",
     "Sas.Camera.Projection"},
    {Host_value::projection_inverse, "projection_inverse", Base_type::matrix4, "PROJECTIONINVERSE",
     ""},
    {Host_value::time, "time", Base_type::float1, "TIME", "Sas.Time.Now"},
};

constexpr bool host_values_in_order()
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(Host_value::none); ++i)
        if (host_values[i].value != static_cast<Host_value>(i))
            return false;
    return true;
}
static_assert(host_values_in_order(), "a value of the host has its row in the wrong place");

constexpr const Host_value_row& row_of(Host_value value)
{
    return host_values[static_cast<std::size_t>(value)];
}

constexpr const char* name_of(Host_value value)
{
    return row_of(value).name;
}

} // namespace reference_host

#endif
