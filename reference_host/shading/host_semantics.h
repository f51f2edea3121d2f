// What effects call the values that the host fills.
#ifndef REFERENCE_HOST_SHADING_HOST_SEMANTICS_H
#define REFERENCE_HOST_SHADING_HOST_SEMANTICS_H

#include "reference_host/shading/shading_state.h"

namespace reference_host
{

struct Host_semantic {
    Host_value value;
    const char* semantic;
    const char* sas_address; // the Standard Annotations and Semantics of DirectX
};

// In the order of the enumeration.
constexpr Host_semantic host_semantics[] = {
    {Host_value::world_view_projection, "WORLDVIEWPROJECTION", "Sas.Camera.ObjectToProjection"},
    {Host_value::world_view, "WORLDVIEW", "Sas.Camera.ObjectToView"},
    {Host_value::world_view_it, "WORLDVIEWINVERSETRANSPOSE", ""},
    {Host_value::world, "WORLD", "Sas.Skeleton.MeshToJointToWorld[0]"},
    {Host_value::world_it, "WORLDINVERSETRANSPOSE", ""},
    {Host_value::world_inverse, "WORLDINVERSE", ""},
    {Host_value::world_view_inverse, "WORLDVIEWINVERSE", ""},
    {Host_value::world_view_projection_inverse, "WORLDVIEWPROJECTIONINVERSE", ""},
    {Host_value::view_matrix, "VIEW", "Sas.Camera.WorldToView"},
    {Host_value::view_inverse, "VIEWINVERSE", "Sas.Camera.ViewToWorld"},
    {Host_value::view_projection, "VIEWPROJECTION", "Sas.Camera.WorldToProjection"},
    {Host_value::view_projection_inverse, "VIEWPROJECTIONINVERSE", ""},
    {Host_value::projection, "PROJECTION", "Sas.Camera.Projection"},
    {Host_value::projection_inverse, "PROJECTIONINVERSE", ""},
    {Host_value::time, "TIME", "Sas.Time.Now"},
};

} // namespace reference_host

#endif
