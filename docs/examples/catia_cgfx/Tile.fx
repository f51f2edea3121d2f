int NeedTandB = 1;

// Shader: Tile
// Source: glazed_tile.mtlx, node Glaze (standard_surface)
// Target: CgFX, vertex profile vp40, fragment profile fp40
// Internal space: camera
// Conventions: rotated cube maps

// ---- transforms -------------------------------------------------------------
float4x4 world_view_projection : WORLDVIEWPROJECTION < string UIWidget = "None"; >;
float4x4 world_view : WORLDVIEW < string UIWidget = "None"; >;
float4x4 world_view_it : WORLDVIEWINVERSETRANSPOSE < string UIWidget = "None"; >;

// Shared with the lights that are added to this text.
#ifndef __WORLD_TO_CAMERA
#define __WORLD_TO_CAMERA
float4x4 __world_to_camera : View;
#endif

// ---- scene ------------------------------------------------------------------
float4 scene_ambient = float4(0.00,0.00,0.00,1.00);

// ---- parameters -------------------------------------------------------------
float3 tint
<
    string UIName = "Tint";
    string UIWidget = "Color";
> = float3(1.0, 0.95, 0.9);

float specular_roughness
<
    string UIName = "Roughness";
    string UIWidget = "Slider";
    float UIMin = 0.05;
    float UIMax = 1.0;
    float UIStep = 0.001;
> = 0.2;

// ---- textures ---------------------------------------------------------------
sampler2D glaze_map
<
    string ResourceName = "images/tile_color.png";
    string ResourceType = "2D";
    string UIName = "Glaze";
> = sampler_state
{
    MinFilter = LinearMipMapLinear;
    MagFilter = Linear;
};

sampler2D relief_map
<
    string ResourceName = "images/tile_normal.png";
    string ResourceType = "2D";
    string UIName = "Relief";
> = sampler_state
{
    MinFilter = LinearMipMapLinear;
    MagFilter = Linear;
};

// ---- shading state ----------------------------------------------------------
struct State
{
    float3 position;
    float3 normal;
    float3 direction; // from the eye to the point
    float3 texture_tangent;
    float3 texture_binormal;
    float2 texture_coordinate0;
    float3 light_to_surface; // filled by lights
    float light_distance;
    float light_dotnl;
};

struct Light_iterator
{
    float4 tsl_raw_contribution;
    float4 tsl_contribution;
    float3 tsl_point;
    float tsl_distance;
    float tsl_dot_nl;
    float3 tsl_direction; // towards the light
};

interface Light
{
    Light_iterator eval(State state);
};

Light lights[];

// ---- vertex program ---------------------------------------------------------
struct Vertex_in
{
    float3 position : POSITION;
    float3 normal : NORMAL;
    float3 tangent : TEXCOORD1;
    float3 binormal : TEXCOORD2;
    float2 texcoord0 : TEXCOORD0;
};

struct Vertex_out
{
    float4 hposition : POSITION;
    float3 position : TEXCOORD0;
    float3 normal : TEXCOORD1;
    float3 texture_tangent : TEXCOORD2;
    float3 texture_binormal : TEXCOORD3;
    float2 texture_coordinate0 : TEXCOORD4;
};

Vertex_out vertex_main(Vertex_in vertex)
{
    Vertex_out result;
    float4 position = float4(vertex.position, 1.0);
    result.hposition = mul(world_view_projection, position);
    result.position = mul(world_view, position).xyz;
    result.normal = mul((float3x3)world_view_it, vertex.normal);
    result.texture_tangent = mul((float3x3)world_view, vertex.tangent);
    result.texture_binormal = mul((float3x3)world_view, vertex.binormal);
    result.texture_coordinate0 = vertex.texcoord0;
    return result;
}

// ---- shader -----------------------------------------------------------------
float3 srgb_to_linear(float3 color)
{
    float3 dark = color / 12.92;
    float3 bright = pow(max((color + 0.055) / 1.055, 0.0), float3(2.4, 2.4, 2.4));
    return lerp(dark, bright, step(0.04045, color));
}

float3 normal_map(float3 texel, float2 scale, float3 normal, float3 tangent, float3 bitangent)
{
    float3 offset = texel * 2.0 - 1.0;
    return normalize(tangent * (offset.x * scale.x) + bitangent * (offset.y * scale.y)
        + normal * offset.z);
}

float ior_reflectance(float ior)
{
    float ratio = (ior - 1.0) / (ior + 1.0);
    return ratio * ratio;
}

float2 ggx_energy(float cosine, float alpha)
{
    float x = clamp(cosine, 0.0, 1.0);
    float y = clamp(alpha, 0.001, 1.0);
    float4 rational = float4(0.2478, 0.8819, 1.0, 1.0)
        + float4(-3.252, -2.244, -5.608, -1.329) * x + float4(6.493, -0.6456, 5.063, 10.67) * y
        + float4(11.73, 2.687, 27.73, -4.701) * (x * y)
        + float4(19.21, 1.406, 20.94, 13.52) * (x * x)
        + float4(-5.427, 0.4797, -4.637, 3.749) * (y * y)
        + float4(-24.02, -2.213, -41.33, -55.12) * (x * x * y)
        + float4(3.367, -1.895, -3.876, 81.94) * (x * y * y)
        + float4(3.66, 1.574, 39.98, 64.58) * (x * x * y * y);
    float2 shares = saturate(rational.xy / rational.zw);
    return float2(min(shares.x, 1.0 - shares.y), shares.y);
}

float n_dot_v(State state)
{
    return max(dot(state.normal, -state.direction), 0.0001);
}

float dielectric_reflectance(float cosine, float ior)
{
    float g = sqrt(max(ior * ior - 1.0 + cosine * cosine, 0.0));
    float a = (g - cosine) / (g + cosine);
    float b = (cosine * (g + cosine) - 1.0) / (cosine * (g - cosine) + 1.0);
    return 0.5 * a * a * (1.0 + b * b);
}

float3 ggx_gain(float3 reflected, float2 energy)
{
    float once = max(energy.x + energy.y, 0.05);
    return 1.0 + reflected * max(1.0 - once, 0.0) / once;
}

float3 dielectric_albedo(State state, float ior, float alpha, float2 energy)
{
    float cosine = min(n_dot_v(state), 1.0);
    float f0 = ior_reflectance(ior);
    float exact = dielectric_reflectance(cosine, ior);
    float off = exact - (f0 + (1.0 - f0) * pow(1.0 - cosine, 5.0));
    float once = f0 * energy.x + energy.y + off * (1.0 - saturate(2.0 * alpha));
    return once * ggx_gain(exact.xxx, energy);
}

float v_dot_h(State state, Light_iterator light)
{
    return saturate(dot(normalize(light.tsl_direction - state.direction), -state.direction));
}

float3 arriving(State state, Light_iterator light)
{
    return light.tsl_contribution.xyz * saturate(dot(state.normal, light.tsl_direction));
}

float ggx_visibility(float n_dot_l, float n_dot_v, float alpha)
{
    float a2 = alpha * alpha;
    return 0.5 / max(n_dot_l * sqrt(n_dot_v * n_dot_v * (1.0 - a2) + a2)
        + n_dot_v * sqrt(n_dot_l * n_dot_l * (1.0 - a2) + a2), 0.0001);
}

float ggx_lobe(State state, Light_iterator light, float alpha)
{
    float3 half_way = normalize(light.tsl_direction - state.direction);
    float n_dot_l = saturate(dot(state.normal, light.tsl_direction));
    float n_dot_h = saturate(dot(state.normal, half_way));
    float a = max(alpha, 0.001);
    float d = n_dot_h * n_dot_h * (a * a - 1.0) + 1.0;
    return a * a * 0.3183099 / (d * d) * ggx_visibility(n_dot_l, n_dot_v(state), a);
}

float3 dielectric_lit(State state, Light_iterator light, float ior, float alpha, float2 energy)
{
    float3 reflected = dielectric_reflectance(v_dot_h(state, light), ior).xxx;
    return arriving(state, light) * reflected * ggx_gain(reflected, energy)
        * ggx_lobe(state, light, alpha);
}

float3 lambert_lit(State state, Light_iterator light)
{
    return arriving(state, light) * 0.3183099;
}

float4 Tile(State state)
{
    float3 glaze = srgb_to_linear(tex2D(glaze_map,
        state.texture_coordinate0 * float2(4.0, 4.0)).xyz);
    float3 tinted_glaze = glaze * tint;
    float3 relief = tex2D(relief_map, state.texture_coordinate0 * float2(4.0, 4.0)).xyz;
    float3 tilted = normal_map(relief, float2(1.0, 1.0), state.normal, state.texture_tangent,
        state.texture_binormal);
    float gloss_alpha = specular_roughness * specular_roughness;
    float2 gloss_energy = ggx_energy(dot(tilted, -state.direction), gloss_alpha);

    state.normal = tilted;
    float3 gloss_albedo = dielectric_albedo(state, 1.5, gloss_alpha, gloss_energy);
    float3 gloss_rest = 1.0 - gloss_albedo;
    float3 diffuse_weight = gloss_rest * tinted_glaze;

    float3 color = scene_ambient.xyz * diffuse_weight;
    for (int i = 0; i < lights.length; i++)
    {
        Light_iterator light = lights[i].eval(state);
        color += dielectric_lit(state, light, 1.5, gloss_alpha, gloss_energy);
        color += diffuse_weight * lambert_lit(state, light);
    }
    return float4(color, 1.0);
}

// ---- fragment program -------------------------------------------------------
float4 fragment_main(Vertex_out fragment, float face : FACE) : COLOR
{
    State state;
    state.position = fragment.position;
    state.normal = normalize(fragment.normal);
    state.direction = normalize(state.position);
    state.texture_tangent = normalize(fragment.texture_tangent);
    state.texture_binormal = normalize(fragment.texture_binormal);
    state.texture_coordinate0 = fragment.texture_coordinate0;
    state.light_to_surface = float3(0.0, 0.0, 0.0);
    state.light_distance = 0.0;
    state.light_dotnl = 0.0;
    if (face < 0.0)
    {
        state.normal = -state.normal;
    }
    state.normal = faceforward(state.normal, state.direction, state.normal);
    return Tile(state);
}

// ---- technique --------------------------------------------------------------
technique T0
{
    pass P0
    {
        DepthTestEnable = true;
        DepthMask = true;
        DepthFunc = LEqual;
        BlendEnable = true;
        BlendFunc = int2(SrcAlpha, OneMinusSrcAlpha);
        CullFaceEnable = false;
        VertexProgram = compile vp40 vertex_main();
        FragmentProgram = compile fp40 fragment_main();
    }
}
// CATIA light implementation for directional light, point light and spot light 
 
// How this text is used 
// 
// The effect above declares the interface Light, the light list lights and the 
// structs State and Light_iterator. The application creates one instance of 
// SLightDir, SLightPoint or SLightSpot for every light of the scene, sets the 
// five members of the instance and binds the instances to the light list, in 
// the order of the scene. The programs of the effect are compiled after that, 
// so that every call of eval is resolved to one of the three methods below. 
// 
// Members of all three structs 
// 
//   LightPos          position of the light, in world space 
//   LightDir          direction of the light, in world space; a directional 
//                     light has it pointing from the scene to the light, a 
//                     spot light has it pointing from the light to the scene 
//   LightColor        diffuse color, already multiplied by the intensity 
//   LightColorSpec    specular color; part of what the application sets, but 
//                     not used by any of the three lights 
//   lightI_SCos_SExp  x: intensity; set by the application, but not used here 
//                     y: cosine of the angle at which the light of a spot 
//                        light begins to fade 
//                     z: exponent of a spot light, see SLightSpot 
// 
// Fields of the shading state that eval fills 
// 
//   light_to_surface  unit vector from the light to the shaded point 
//   light_distance    length of that vector before it was normalized 
//   light_dotnl       cosine of the angle between the normal of the surface 
//                     and the direction towards the light 
// 
// The state is passed by value: the caller keeps its own fields, and the 
// values reach it through the members of the returned Light_iterator. 
// 
// Members of the returned Light_iterator 
// 
//   tsl_raw_contribution  light that is sent towards the surface 
//   tsl_contribution      the same; there are no shadows 
//   tsl_point             position of the light 
//   tsl_distance          light_distance of the state 
//   tsl_dot_nl            light_dotnl of the state 
//   tsl_direction         unit vector from the shaded point to the light 
// 
// Use in the effect 
// 
//   for (int i = 0; i < lights.length; i++) 
//   { 
//       Light_iterator light = lights[i].eval(state); 
//       color += light.tsl_contribution * max(light.tsl_dot_nl, 0.0); 
//   } 
// 
// The list has no size in the file. Its length is the number of instances that 
// are bound to it; without any, the loop is empty and adds nothing. The methods 
// contain no branches, so they compile for profiles without flow control. 
// 
// Binding 
// 
// The list may mix the three types in any order, and a type may occur more than 
// once. All three structs have the same members, so the application can 
// set up an instance without knowing its type. Members that are marked as not 
// used may be left at zero. 
// 
// Spaces and units 
// 
// The shading state is in camera space. The members of the lights arrive in 
// world space and are transformed here. The factor 3.141592 makes up for the 
// division by pi in the diffuse reflection of the surface shaders. Distances are 
// in the units of the scene. 
// 
// Limits 
// 
//   - A point or spot light must not lie exactly on the shaded surface, because 
//     the vector from the light to the surface could not be normalized then. 
//   - A directional light needs a LightDir that is not zero. 
//   - A spot light needs a lightI_SCos_SExp.y that is greater than zero, which 
//     means a cone of less than a right angle on each side of its axis. 
//   - The matrix __world_to_camera must hold a rigid motion, as the matrix of a 
//     view does. With a scale in it, the distances come out in units that 
//     are not those of the scene. 
 
//------------------------------------------------------------------------------ 
// World space to camera space 
// 
// The generated effect declares the same matrix, under the same guard, when its 
// own code needs it. 
//------------------------------------------------------------------------------ 
 
#ifndef __WORLD_TO_CAMERA 
#define __WORLD_TO_CAMERA 
float4x4 __world_to_camera : View; 
#endif 
 
struct SLightDir : Light 
{ 
    // Set by the application. 
    const float3 LightPos;            // reported as the point of the light 
    const float3 LightDir;            // from the scene to the light 
    const float3 LightColor;          // color and intensity 
    const float3 LightColorSpec;      // not used 
    const float3 lightI_SCos_SExp;    // not used 
 
    // Light that arrives at the surface: the color of the light, whatever the 
    // distance, since the light is infinitely far away. 
    void Light_directional_main(float3 color, State state, out float4 result) 
    { 
        result = float4(LightColor, 1.0) * 3.141592; 
    } 
 
    // Evaluates the light for the point, normal and view direction in state. 
    // The point of the light is LightPos as it was set, in world space, while 
    // the other two lights report their point in camera space. 
    Light_iterator eval(State state) 
    { 
        Light_iterator light_iterator; 
        float4 contribution; 
 
        // Light fields of the state. Only the rotation of the matrix applies to 
        // a direction. 
        state.light_to_surface = mul((float3x3)__world_to_camera, -LightDir); 
        state.light_distance = length(state.light_to_surface); 
        state.light_to_surface /= state.light_distance; 
        state.light_dotnl = dot(-state.light_to_surface, state.normal); 
 
        Light_directional_main(LightColor, state, contribution); 
 
        // What the loop over the light list gets from this light. 
        light_iterator.tsl_raw_contribution = contribution; 
        light_iterator.tsl_contribution = light_iterator.tsl_raw_contribution; 
        light_iterator.tsl_point = LightPos; 
        light_iterator.tsl_distance = state.light_distance; 
        light_iterator.tsl_dot_nl = state.light_dotnl; 
        light_iterator.tsl_direction = -state.light_to_surface; 
        return light_iterator; 
    } 
}; 
 
//------------------------------------------------------------------------------ 
// Point light 
// 
// Sends the same light in every direction. There is no fall-off with distance. 
//------------------------------------------------------------------------------ 
 
struct SLightPoint : Light 
{ 
    // Set by the application. 
    const float3 LightPos;            // position 
    const float3 LightDir;            // not used 
    const float3 LightColor;          // color and intensity 
    const float3 LightColorSpec;      // not used 
    const float3 lightI_SCos_SExp;    // not used 
 
    // Evaluates the light for the point, normal and view direction in state. 
    // The point of the light is reported in camera space. 
    Light_iterator eval(State state) 
    { 
        Light_iterator light_iterator; 
 
        // Position of the light in camera space. 
        float3 light_point = mul(__world_to_camera, float4(LightPos, 1.0)).xyz; 
 
        // Light fields of the state: the vector from the light to the surface 
        // is measured first and normalized afterwards. 
        state.light_to_surface = state.position - light_point; 
        state.light_distance = length(state.light_to_surface); 
        state.light_to_surface /= state.light_distance; 
        state.light_dotnl = dot(-state.light_to_surface, state.normal); 
 
        // Contribution of the light. 
        float4 contribution = float4(LightColor, 1.0) * 3.141592; 
 
        // What the loop over the light list gets from this light. 
        light_iterator.tsl_raw_contribution = contribution; 
        light_iterator.tsl_contribution = light_iterator.tsl_raw_contribution; 
        light_iterator.tsl_point = light_point; 
        light_iterator.tsl_distance = state.light_distance; 
        light_iterator.tsl_dot_nl = state.light_dotnl; 
        light_iterator.tsl_direction = -state.light_to_surface; 
        return light_iterator; 
    } 
}; 
 
//------------------------------------------------------------------------------ 
// Spot light 
// 
// A point light that is limited to a cone around its axis. There is no fall-off 
// with distance. The fall-off towards the rim is computed in three steps: 
// 
//   angle     cosine of the angle between the axis and the shaded point 
//   t         0 where angle is at least lightI_SCos_SExp.y, 1 at a right angle 
//   falloff   1 at t = 0 and 0 at t = 1, along the cubic curve 
//             1 - (3 t^2 (1 - t) + t^3), raised to a fixed power 
// 
// With lightI_SCos_SExp.y = 0.90, a cone of 26 degrees on each side of the axis, 
// that gives: 
// 
//   angle    t        curve    falloff 
//   0.95     0.0000   1.0000   1.0000 
//   0.90     0.0000   1.0000   1.0000 
//   0.89     0.0111   0.9996   0.9122 
//   0.88     0.0222   0.9985   0.6941 
//   0.87     0.0333   0.9967   0.4421 
//   0.86     0.0444   0.9942   0.2365 
//   0.85     0.0556   0.9911   0.1066 
//   0.80     0.1111   0.9657   0.0002 
//------------------------------------------------------------------------------ 
 
struct SLightSpot : Light 
{ 
    // Set by the application. 
    const float3 LightPos;            // position 
    const float3 LightDir;            // axis, from the light to the scene 
    const float3 LightColor;          // color and intensity 
    const float3 LightColorSpec;      // not used 
    const float3 lightI_SCos_SExp;    // y: cosine of the cone, z: see below 
 
    // Evaluates the light for the point, normal and view direction in state. 
    // The point of the light is reported in camera space. Points behind the 
    // light get an angle of 0 and with it no light at all. 
    Light_iterator eval(State state) 
    { 
        Light_iterator light_iterator; 
 
        // Position of the light in camera space. 
        float3 light_point = mul(__world_to_camera, float4(LightPos, 1.0)).xyz; 
 
        // Axis of the light in camera space. 
        float3 light_axis = normalize(mul((float3x3)__world_to_camera, LightDir)); 
 
        // Light fields of the state: the vector from the light to the surface 
        // is measured first and normalized afterwards. 
        state.light_to_surface = state.position - light_point; 
        state.light_distance = length(state.light_to_surface); 
        state.light_to_surface /= state.light_distance; 
        state.light_dotnl = dot(-state.light_to_surface, state.normal); 
 
        // Fall-off from the axis to the rim of the cone. 
        float angle = clamp(dot(state.light_to_surface, light_axis), 0.0, 1.0); 
        float t = max((lightI_SCos_SExp.y - angle) / lightI_SCos_SExp.y, 0.0); 
        float falloff = 1.0 - clamp(3.0 * t * t * (1.0 - t) + t * t * t, 0.0, 1.0); 
        // The exponent is fixed. With the exponent of the light it would read: 
        // falloff = pow(falloff, lightI_SCos_SExp.z); 
        falloff = pow(falloff, 250.0); 
 
        // Contribution of the light. 
        float4 contribution = float4(LightColor, 1.0) * 3.141592 * falloff; 
 
        // What the loop over the light list gets from this light. 
        light_iterator.tsl_raw_contribution = contribution; 
        light_iterator.tsl_contribution = light_iterator.tsl_raw_contribution; 
        light_iterator.tsl_point = light_point; 
        light_iterator.tsl_distance = state.light_distance; 
        light_iterator.tsl_dot_nl = state.light_dotnl; 
        light_iterator.tsl_direction = -state.light_to_surface; 
        return light_iterator; 
    } 
}; 
