// A textured surface below one point light, in world space, for row vectors.
float4x4 world_view_projection : WORLDVIEWPROJECTION;
float4x4 world : WORLD;
float4x4 world_it : WORLDINVERSETRANSPOSE;

float3 tint < string UIName = "Tint"; > = {0.9, 0.8, 0.7};
float4 lamp_position : POSITION < string Object = "PointLight"; > = {2.0, 2.0, 3.0, 1.0};

texture base_map < string ResourceName = "stripes.png"; >;
sampler2D base_map_sampler = sampler_state
{
    Texture = (base_map);
    MinFilter = Linear;
    MagFilter = Linear;
    MipFilter = Linear;
};

struct Vertex_in
{
    float3 position : POSITION;
    float3 normal : NORMAL;
    float3 tangent : BINORMAL;
    float4 texcoord0 : TEXCOORD0;
};

struct Vertex_out
{
    float4 hposition : POSITION;
    float4 texcoord0 : TEXCOORD0;
    float3 position : TEXCOORD1;
    float3 normal : TEXCOORD2;
    float3 tangent : TEXCOORD3;
};

struct Fragment_in
{
    float4 texcoord0 : TEXCOORD0;
    float3 position : TEXCOORD1;
    float3 normal : TEXCOORD2;
    float3 tangent : TEXCOORD3;
};

Vertex_out vertex_main(Vertex_in vertex)
{
    Vertex_out result;
    float4 position = float4(vertex.position, 1.0);
    result.hposition = mul(position, world_view_projection);
    result.texcoord0 = vertex.texcoord0;
    result.position = mul(position, world).xyz;
    result.normal = mul(vertex.normal, (float3x3)world_it);
    result.tangent = mul(vertex.tangent, (float3x3)world);
    return result;
}

float4 fragment_main(Fragment_in fragment) : COLOR
{
    float3 to_lamp = normalize(lamp_position.xyz - fragment.position);
    float lit = max(dot(normalize(fragment.normal), to_lamp), 0.0);
    float brushed = abs(dot(normalize(fragment.tangent), to_lamp)) * 0.25;
    float3 color = tex2D(base_map_sampler, fragment.texcoord0.xy).rgb * tint;
    return float4(color * (lit + brushed), 1.0);
}

technique T0
{
    pass P0
    {
        ZEnable = true;
        ZFunc = LessEqual;
        VertexShader = compile vs_3_0 vertex_main();
        PixelShader = compile ps_3_0 fragment_main();
    }
}
