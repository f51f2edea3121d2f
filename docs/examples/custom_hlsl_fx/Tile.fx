// Shader: Tile
// Source: glazed_tile.mtlx, node Glaze (standard_surface)
// Target: HLSL effect, vertex profile vs_3_0, fragment profile ps_3_0
// Internal space: camera

// ---- transforms -------------------------------------------------------------
float4x4 world_view_projection : WORLDVIEWPROJECTION < string UIWidget = "None"; >;
float4x4 world_view : WORLDVIEW < string UIWidget = "None"; >;
float4x4 world_view_it : WORLDVIEWINVERSETRANSPOSE < string UIWidget = "None"; >;
float4x4 view_matrix : VIEW < string UIWidget = "None"; >;

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
texture glaze_map
<
    string ResourceName = "images/tile_color.png";
    string ResourceType = "2D";
    string UIName = "Glaze";
>;

sampler2D glaze_map_sampler = sampler_state
{
    Texture = (glaze_map);
    MinFilter = Linear;
    MagFilter = Linear;
    MipFilter = Linear;
};

texture relief_map
<
    string ResourceName = "images/tile_normal.png";
    string ResourceType = "2D";
    string UIName = "Relief";
>;

sampler2D relief_map_sampler = sampler_state
{
    Texture = (relief_map);
    MinFilter = Linear;
    MagFilter = Linear;
    MipFilter = Linear;
};

// ---- lights and surroundings ------------------------------------------------
float3 sun_direction : DIRECTION
<
    string Object = "DirectionalLight";
    string Space = "World";
    string UIName = "Sun direction";
    string UIWidget = "Numeric";
    string UIFolder = "sun";
> = float3(-0.4, -0.5, -0.8);

float3 sun_color : DIFFUSE
<
    string Object = "DirectionalLight";
    string UIName = "Sun color";
    string UIWidget = "Color";
    string UIFolder = "sun";
> = float3(1.0, 1.0, 1.0);

float sun_intensity
<
    string UIName = "Sun intensity";
    string UIWidget = "Slider";
    float UIMin = 0.0;
    float UIMax = 10.0;
    float UIStep = 0.1;
    string UIFolder = "sun";
> = 1.0;

// ---- shading state ----------------------------------------------------------
struct State
{
    float3 position;
    float3 normal;
    float3 direction; // from the eye to the point
    float3 texture_tangent;
    float3 texture_binormal;
    float2 texture_coordinate0;
};

struct Light_iterator
{
    float4 tsl_contribution;
    float tsl_dot_nl;
    float3 tsl_direction; // towards the light
};

// ---- vertex program ---------------------------------------------------------
struct Vertex_in
{
    float3 position : POSITION;
    float3 normal : NORMAL;
    float3 tangent : TANGENT;
    float3 binormal : BINORMAL;
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

struct Fragment_in
{
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
    result.hposition = mul(position, world_view_projection);
    result.position = mul(position, world_view).xyz;
    result.normal = mul(vertex.normal, (float3x3)world_view_it);
    result.texture_tangent = mul(vertex.tangent, (float3x3)world_view);
    result.texture_binormal = mul(vertex.binormal, (float3x3)world_view);
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

Light_iterator light_from(State state, float3 to_surface, float distance, float3 color)
{
    Light_iterator light;
    light.tsl_contribution = float4(color * 3.1415927, 1.0);
    light.tsl_direction = -to_surface;
    light.tsl_dot_nl = dot(state.normal, -to_surface);
    return light;
}

Light_iterator directional_light(State state, float3 direction, float3 color)
{
    return light_from(state, normalize(direction), 0.0, color);
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
    float3 glaze = srgb_to_linear(tex2D(glaze_map_sampler,
        state.texture_coordinate0 * float2(4.0, 4.0)).xyz);
    float3 tinted_glaze = glaze * tint;
    float3 relief = tex2D(relief_map_sampler, state.texture_coordinate0 * float2(4.0, 4.0)).xyz;
    float3 tilted = normal_map(relief, float2(1.0, 1.0), state.normal, state.texture_tangent,
        state.texture_binormal);
    float gloss_alpha = specular_roughness * specular_roughness;
    float2 gloss_energy = ggx_energy(dot(tilted, -state.direction), gloss_alpha);

    state.normal = tilted;
    float3 gloss_albedo = dielectric_albedo(state, 1.5, gloss_alpha, gloss_energy);
    float3 gloss_rest = 1.0 - gloss_albedo;
    float3 diffuse_weight = gloss_rest * tinted_glaze;

    float3 color = float3(0.0, 0.0, 0.0);
    Light_iterator sun = directional_light(state, mul(sun_direction, (float3x3)view_matrix),
        sun_color * sun_intensity);
    color += dielectric_lit(state, sun, 1.5, gloss_alpha, gloss_energy);
    color += diffuse_weight * lambert_lit(state, sun);
    return float4(color, 1.0);
}

// ---- fragment program -------------------------------------------------------
float4 fragment_main(Fragment_in fragment) : COLOR
{
    State state;
    state.position = fragment.position;
    state.normal = normalize(fragment.normal);
    state.direction = normalize(state.position);
    state.texture_tangent = normalize(fragment.texture_tangent);
    state.texture_binormal = normalize(fragment.texture_binormal);
    state.texture_coordinate0 = fragment.texture_coordinate0;
    return Tile(state);
}

// ---- technique --------------------------------------------------------------
technique T0
{
    pass P0
    {
        ZEnable = true;
        ZWriteEnable = true;
        ZFunc = LessEqual;
        AlphaBlendEnable = false;
        CullMode = CCW;
        VertexShader = compile vs_3_0 vertex_main();
        PixelShader = compile ps_3_0 fragment_main();
    }
}
