// Shader: Tile
// Source: glazed_tile.mtlx, node Glaze (standard_surface)
// Target: HLSL effect, vertex profile vs_3_0, fragment profile ps_3_0
// Internal space: world
// Host: flipped textures, rotated cube maps

// ---- transforms -------------------------------------------------------------
float4x4 world_view_projection : WORLDVIEWPROJECTION < string UIWidget = "None"; >;
float4x4 world : WORLD < string UIWidget = "None"; >;
float4x4 world_it : WORLDINVERSETRANSPOSE < string UIWidget = "None"; >;
float4x4 view_inverse : VIEWINVERSE < string UIWidget = "None"; >;

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
float3 sun_direction
<
    string UIName = "Sun direction";
    string UIWidget = "Numeric";
    string UIFolder = "sun";
> = float3(-0.4, -0.5, -0.8);

float3 sun_color
<
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

struct Surface
{
    float3 base_color;
    float3 specular_color;
    float specular_roughness;
    float specular_ior;
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
    result.position = mul(position, world).xyz;
    result.normal = mul(vertex.normal, (float3x3)world_it);
    result.texture_tangent = mul(vertex.tangent, (float3x3)world);
    result.texture_binormal = mul(vertex.binormal, (float3x3)world);
    result.texture_coordinate0 = vertex.texcoord0;
    return result;
}

// ---- shader -----------------------------------------------------------------
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

float ior_reflectance(float ior)
{
    float ratio = (ior - 1.0) / (ior + 1.0);
    return ratio * ratio;
}

float3 base_reflectance(Surface surface)
{
    return surface.specular_color * ior_reflectance(surface.specular_ior);
}

float3 fresnel(float3 reflectance, float cosine)
{
    float edge = saturate(50.0 * max(reflectance.x, max(reflectance.y, reflectance.z)));
    return reflectance + (edge - reflectance) * pow(1.0 - cosine, 5.0);
}

float3 diffuse_albedo(Surface surface)
{
    return surface.base_color;
}

float ggx_lobe(float n_dot_l, float n_dot_v, float n_dot_h, float roughness)
{
    float a = max(roughness * roughness, 0.002);
    float a2 = a * a;
    float d = n_dot_h * n_dot_h * (a2 - 1.0) + 1.0;
    float masking = n_dot_l * sqrt(n_dot_v * n_dot_v * (1.0 - a2) + a2)
        + n_dot_v * sqrt(n_dot_l * n_dot_l * (1.0 - a2) + a2);
    return a2 * 0.15915494 / (d * d * max(masking, 0.0001));
}

float3 light_response(Surface surface, State state, Light_iterator light)
{
    float3 to_eye = -state.direction;
    float3 half_way = normalize(light.tsl_direction + to_eye);
    float n_dot_l = saturate(light.tsl_dot_nl);
    float n_dot_v = max(dot(state.normal, to_eye), 0.0001);
    float n_dot_h = saturate(dot(state.normal, half_way));
    float v_dot_h = saturate(dot(to_eye, half_way));
    float3 reflected = fresnel(base_reflectance(surface), v_dot_h);
    float3 diffuse = diffuse_albedo(surface) * 0.3183099;
    float3 response = diffuse * (1.0 - reflected)
        + reflected * ggx_lobe(n_dot_l, n_dot_v, n_dot_h, surface.specular_roughness);
    return response * light.tsl_contribution.xyz * n_dot_l;
}

float2 flip_v(float2 uv)
{
    return float2(uv.x, 1.0 - uv.y);
}

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

float4 Tile(State state)
{
    float3 glaze = srgb_to_linear(tex2D(glaze_map_sampler,
        flip_v(state.texture_coordinate0 * float2(4.0, 4.0))).xyz);
    float3 tinted_glaze = glaze * tint;
    float3 relief = tex2D(relief_map_sampler,
        flip_v(state.texture_coordinate0 * float2(4.0, 4.0))).xyz;
    float3 tilted = normal_map(relief, float2(1.0, 1.0), state.normal, state.texture_tangent,
        state.texture_binormal);

    Surface surface;
    surface.base_color = tinted_glaze;
    surface.specular_color = float3(1.0, 1.0, 1.0);
    surface.specular_roughness = specular_roughness;
    surface.specular_ior = 1.5;
    state.normal = tilted;

    float3 color = scene_ambient.xyz * surface.base_color;
    Light_iterator sun = directional_light(state, sun_direction, sun_color * sun_intensity);
    color += light_response(surface, state, sun);
    return float4(color, 1.0);
}

// ---- fragment program -------------------------------------------------------
float4 fragment_main(Fragment_in fragment, float face : VFACE) : COLOR
{
    State state;
    state.position = fragment.position;
    state.normal = normalize(fragment.normal);
    state.direction = normalize(state.position - mul(float4(0.0, 0.0, 0.0, 1.0), view_inverse).xyz);
    state.texture_tangent = normalize(fragment.texture_tangent);
    state.texture_binormal = normalize(fragment.texture_binormal);
    state.texture_coordinate0 = fragment.texture_coordinate0;
    if (face < 0.0)
    {
        state.normal = -state.normal;
    }
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
        AlphaBlendEnable = true;
        SrcBlend = SrcAlpha;
        DestBlend = InvSrcAlpha;
        CullMode = None;
        VertexShader = compile vs_3_0 vertex_main();
        PixelShader = compile ps_3_0 fragment_main();
    }
}
