// Shader: Tile
// Source: glazed_tile.mtlx, node Glaze (standard_surface)
// Target: C++17 source for the renderer

#include <cmath>
#include <cstddef>

namespace Tile_shader
{

// ---- vectors and matrices ---------------------------------------------------

template <std::size_t N>
struct Components;
template <>
struct Components<2> { float x, y; };
template <>
struct Components<3> { float x, y, z; };
template <>
struct Components<4> { float x, y, z, w; };

template <std::size_t N>
struct Vector : Components<N>
{
    explicit Vector(float all = 0.0f)
    {
        for (std::size_t i = 0; i < N; i++)
            (*this)[i] = all;
    }

    // The parts' components, one after the other.
    template <class A, class B, class... More>
    Vector(const A& a, const B& b, const More&... more)
    {
        std::size_t next = 0;
        append(next, a);
        append(next, b);
        (append(next, more), ...);
    }

    float& operator[](std::size_t i)
    {
        return i == 0 ? this->x : i == 1 ? this->y : upper(*this, i);
    }
    float operator[](std::size_t i) const { return const_cast<Vector&>(*this)[i]; }

private:
    static float& upper(Components<2>& v, std::size_t) { return v.y; }
    static float& upper(Components<3>& v, std::size_t) { return v.z; }
    static float& upper(Components<4>& v, std::size_t i) { return i == 2 ? v.z : v.w; }

    void append(std::size_t& next, float part) { (*this)[next++] = part; }
    template <std::size_t M>
    void append(std::size_t& next, const Vector<M>& part)
    {
        for (std::size_t i = 0; i < M; i++)
            append(next, part[i]);
    }
};

using float2 = Vector<2>;
using float3 = Vector<3>;
using float4 = Vector<4>;

// Applies a function to the components of vectors; numbers count as vectors of equal components.
float at(float number, std::size_t) { return number; }
template <std::size_t N>
float at(const Vector<N>& vector, std::size_t i) { return vector[i]; }

template <std::size_t N, class Function, class... Arguments>
Vector<N> each(const Function& function, const Arguments&... arguments)
{
    Vector<N> result;
    for (std::size_t i = 0; i < N; i++)
        result[i] = function(at(arguments, i)...);
    return result;
}

#define VECTOR_OPERATOR(op)                                                                   \
    template <std::size_t N>                                                                  \
    Vector<N> operator op(const Vector<N>& a, const Vector<N>& b)                             \
    { return each<N>([](float x, float y) { return x op y; }, a, b); }                        \
    template <std::size_t N>                                                                  \
    Vector<N> operator op(const Vector<N>& a, float b)                                        \
    { return each<N>([](float x, float y) { return x op y; }, a, b); }                        \
    template <std::size_t N>                                                                  \
    Vector<N> operator op(float a, const Vector<N>& b)                                        \
    { return each<N>([](float x, float y) { return x op y; }, a, b); }                        \
    template <std::size_t N, class Other>                                                     \
    Vector<N>& operator op##=(Vector<N>& a, const Other& b) { return a = a op b; }
VECTOR_OPERATOR(+)
VECTOR_OPERATOR(-)
VECTOR_OPERATOR(*)
VECTOR_OPERATOR(/)
#undef VECTOR_OPERATOR

template <std::size_t N>
Vector<N> operator-(const Vector<N>& a) { return 0.0f - a; }

template <std::size_t... I, class V>
Vector<sizeof...(I)> swizzle(const V& vector)
{
    return Vector<sizeof...(I)>(vector[I]...);
}

// Matrices by rows; vectors stand on their left.
template <std::size_t N>
struct Matrix
{
    Vector<N> rows[N];

    Matrix() = default;
    template <std::size_t M>
    explicit Matrix(const Matrix<M>& larger) // its upper left
    {
        for (std::size_t i = 0; i < N; i++)
            for (std::size_t j = 0; j < N; j++)
                rows[i][j] = larger[i][j];
    }
    template <class... Parts>
    explicit Matrix(const Parts&... parts)
    {
        std::size_t next = 0;
        (append(next, parts), ...);
    }
    Vector<N>& operator[](std::size_t i) { return rows[i]; }
    const Vector<N>& operator[](std::size_t i) const { return rows[i]; }

private:
    void append(std::size_t& next, float part)
    {
        rows[next / N][next % N] = part;
        next++;
    }
    void append(std::size_t& next, const Vector<N>& part)
    {
        for (std::size_t i = 0; i < N; i++)
            append(next, part[i]);
    }
};

using float3x3 = Matrix<3>;
using float4x4 = Matrix<4>;

template <std::size_t N>
Vector<N> operator*(const Vector<N>& vector, const Matrix<N>& matrix)
{
    Vector<N> result;
    for (std::size_t i = 0; i < N; i++)
        result += vector[i] * matrix[i];
    return result;
}

template <std::size_t N>
Matrix<N> operator*(const Matrix<N>& a, const Matrix<N>& b)
{
    Matrix<N> result;
    for (std::size_t i = 0; i < N; i++)
        result[i] = a[i] * b;
    return result;
}

template <std::size_t N>
Matrix<N> operator+(const Matrix<N>& a, const Matrix<N>& b)
{
    Matrix<N> result;
    for (std::size_t i = 0; i < N; i++)
        result[i] = a[i] + b[i];
    return result;
}

template <std::size_t N>
Matrix<N> operator+(const Matrix<N>& a, float b)
{
    Matrix<N> result;
    for (std::size_t i = 0; i < N; i++)
        result[i] = a[i] + b;
    return result;
}

template <std::size_t N>
Matrix<N> operator-(const Matrix<N>& a, const Matrix<N>& b)
{
    Matrix<N> result;
    for (std::size_t i = 0; i < N; i++)
        result[i] = a[i] - b[i];
    return result;
}

template <std::size_t N>
Matrix<N> operator-(const Matrix<N>& a, float b) { return a + -b; }

template <std::size_t N>
Matrix<N> transpose(const Matrix<N>& matrix)
{
    Matrix<N> result;
    for (std::size_t i = 0; i < N; i++)
        for (std::size_t j = 0; j < N; j++)
            result[i][j] = matrix[j][i];
    return result;
}

// ---- functions of shading languages -----------------------------------------

using std::abs;
using std::acos;
using std::asin;
using std::atan2;
using std::ceil;
using std::cos;
using std::exp;
using std::floor;
using std::log;
using std::pow;
using std::sin;
using std::sqrt;
using std::tan;

float max(float a, float b) { return a < b ? b : a; }
float min(float a, float b) { return b < a ? b : a; }
float fract(float x) { return x - floor(x); }
float clamp(float x, float low, float high) { return min(max(x, low), high); }
float saturate(float x) { return clamp(x, 0.0f, 1.0f); }
float mix(float a, float b, float t) { return a + (b - a) * t; }
float step(float edge, float x) { return x < edge ? 0.0f : 1.0f; }
float smoothstep(float low, float high, float x)
{
    const float t = saturate((x - low) / (high - low));
    return t * t * (3.0f - 2.0f * t);
}

#define VECTOR_FUNCTION_1(function)                                                           \
    template <std::size_t N>                                                                  \
    Vector<N> function(const Vector<N>& a)                                                    \
    { return each<N>([](float x) { return function(x); }, a); }
#define VECTOR_FUNCTION_2(function)                                                           \
    template <std::size_t N, class B>                                                         \
    Vector<N> function(const Vector<N>& a, const B& b)                                        \
    { return each<N>([](float x, float y) { return function(x, y); }, a, b); }
#define VECTOR_FUNCTION_3(function)                                                           \
    template <std::size_t N, class B, class C>                                                \
    Vector<N> function(const Vector<N>& a, const B& b, const C& c)                            \
    { return each<N>([](float x, float y, float z) { return function(x, y, z); }, a, b, c); }
VECTOR_FUNCTION_1(abs)
VECTOR_FUNCTION_1(acos)
VECTOR_FUNCTION_1(asin)
VECTOR_FUNCTION_1(ceil)
VECTOR_FUNCTION_1(cos)
VECTOR_FUNCTION_1(exp)
VECTOR_FUNCTION_1(floor)
VECTOR_FUNCTION_1(fract)
VECTOR_FUNCTION_1(log)
VECTOR_FUNCTION_1(saturate)
VECTOR_FUNCTION_1(sin)
VECTOR_FUNCTION_1(sqrt)
VECTOR_FUNCTION_1(tan)
VECTOR_FUNCTION_2(atan2)
VECTOR_FUNCTION_2(max)
VECTOR_FUNCTION_2(min)
VECTOR_FUNCTION_2(pow)
VECTOR_FUNCTION_2(step)
VECTOR_FUNCTION_3(clamp)
VECTOR_FUNCTION_3(mix)
VECTOR_FUNCTION_3(smoothstep)
#undef VECTOR_FUNCTION_1
#undef VECTOR_FUNCTION_2
#undef VECTOR_FUNCTION_3

template <std::size_t N>
Vector<N> step(float edge, const Vector<N>& x) { return step(Vector<N>(edge), x); }
template <std::size_t N>
Vector<N> smoothstep(float low, float high, const Vector<N>& x)
{
    return smoothstep(Vector<N>(low), Vector<N>(high), x);
}

template <std::size_t N>
float dot(const Vector<N>& a, const Vector<N>& b)
{
    float sum = 0.0f;
    for (std::size_t i = 0; i < N; i++)
        sum += a[i] * b[i];
    return sum;
}

template <std::size_t N>
float length(const Vector<N>& a) { return sqrt(dot(a, a)); }
template <std::size_t N>
float distance(const Vector<N>& a, const Vector<N>& b) { return length(a - b); }
template <std::size_t N>
Vector<N> normalize(const Vector<N>& a) { return a / max(length(a), 1e-20f); }
template <std::size_t N>
Vector<N> reflect(const Vector<N>& a, const Vector<N>& normal)
{
    return a - 2.0f * dot(a, normal) * normal;
}
template <std::size_t N>
Vector<N> refract(const Vector<N>& a, const Vector<N>& normal, float ratio)
{
    const float cosine = dot(a, normal);
    const float rest = 1.0f - ratio * ratio * (1.0f - cosine * cosine);
    return rest < 0.0f ? Vector<N>() : ratio * a - (ratio * cosine + sqrt(rest)) * normal;
}
float3 cross(const float3& a, const float3& b)
{
    return float3(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

// ---- images -----------------------------------------------------------------

// The renderer binds an image by setting the function and what it passes to it.
struct Sampler_2d
{
    float4 (*function)(const void* image, const float2& place) = nullptr;
    const void* image = nullptr;

    float4 lookup(const float2& place) const
    {
        return function ? function(image, place) : float4();
    }
};

struct Sampler_cube
{
    float4 (*function)(const void* image, const float3& direction) = nullptr;
    const void* image = nullptr;

    float4 lookup(const float3& direction) const
    {
        return function ? function(image, direction) : float4();
    }

    // The same, blurred over the directions around: by so much in two of them.
    float4 (*blurred)(const void* image, const float3& direction, const float3& dx,
                      const float3& dy) = nullptr;

    float4 lookup(const float3& direction, const float3& dx, const float3& dy) const
    {
        return blurred ? blurred(image, direction, dx, dy) : lookup(direction);
    }
};

// ---- shading state ----------------------------------------------------------
struct State
{
    float3 normal;
    float3 direction; // from the eye to the point
    float3 texture_tangent;
    float3 texture_binormal;
    float2 texture_coordinate0;
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

// The lights of the scene as the renderer hands them to a shader.
struct Light
{
    virtual ~Light() = default;
    virtual Light_iterator eval(const State& state) const = 0;
};

struct Light_list
{
    const Light* const* lights = nullptr;
    int length = 0;

    const Light& operator[](int i) const { return *lights[i]; }
};

// ---- parameters -------------------------------------------------------------
float3 tint = float3(1.0f, 0.95f, 0.9f);
float specular_roughness = 0.2f;
Sampler_2d glaze_map; // images/tile_color.png
Sampler_2d relief_map; // images/tile_normal.png

// ---- functions --------------------------------------------------------------
float3 srgb_to_linear(float3 color)
{
    float3 dark = color / 12.92f;
    float3 bright = pow(max((color + 0.055f) / 1.055f, 0.0f), float3(2.4f));
    return mix(dark, bright, step(0.04045f, color));
}

float3 normal_map(float3 texel, float2 scale, float3 normal, float3 tangent, float3 bitangent)
{
    float3 offset = texel * 2.0f - 1.0f;
    return normalize(tangent * (offset.x * scale.x) + bitangent * (offset.y * scale.y)
        + normal * offset.z);
}

float ior_reflectance(float ior)
{
    float ratio = (ior - 1.0f) / (ior + 1.0f);
    return ratio * ratio;
}

float2 ggx_energy(float cosine, float alpha)
{
    float x = clamp(cosine, 0.0f, 1.0f);
    float y = clamp(alpha, 0.001f, 1.0f);
    float4 rational = float4(0.2478f, 0.8819f, 1.0f, 1.0f)
        + float4(-3.252f, -2.244f, -5.608f, -1.329f) * x
        + float4(6.493f, -0.6456f, 5.063f, 10.67f) * y
        + float4(11.73f, 2.687f, 27.73f, -4.701f) * (x * y)
        + float4(19.21f, 1.406f, 20.94f, 13.52f) * (x * x)
        + float4(-5.427f, 0.4797f, -4.637f, 3.749f) * (y * y)
        + float4(-24.02f, -2.213f, -41.33f, -55.12f) * (x * x * y)
        + float4(3.367f, -1.895f, -3.876f, 81.94f) * (x * y * y)
        + float4(3.66f, 1.574f, 39.98f, 64.58f) * (x * x * y * y);
    float2 shares = saturate(swizzle<0, 1>(rational) / swizzle<2, 3>(rational));
    return float2(min(shares.x, 1.0f - shares.y), shares.y);
}

float n_dot_v(State state)
{
    return max(dot(state.normal, -state.direction), 0.0001f);
}

float dielectric_reflectance(float cosine, float ior)
{
    float g = sqrt(max(ior * ior - 1.0f + cosine * cosine, 0.0f));
    float a = (g - cosine) / (g + cosine);
    float b = (cosine * (g + cosine) - 1.0f) / (cosine * (g - cosine) + 1.0f);
    return 0.5f * a * a * (1.0f + b * b);
}

float3 ggx_gain(float3 reflected, float2 energy)
{
    float once = max(energy.x + energy.y, 0.05f);
    return 1.0f + reflected * max(1.0f - once, 0.0f) / once;
}

float3 dielectric_albedo(State state, float ior, float alpha, float2 energy)
{
    float cosine = min(n_dot_v(state), 1.0f);
    float f0 = ior_reflectance(ior);
    float exact = dielectric_reflectance(cosine, ior);
    float off = exact - (f0 + (1.0f - f0) * pow(1.0f - cosine, 5.0f));
    float once = f0 * energy.x + energy.y + off * (1.0f - saturate(2.0f * alpha));
    return once * ggx_gain(float3(exact), energy);
}

float v_dot_h(State state, Light_iterator light)
{
    return saturate(dot(normalize(light.tsl_direction - state.direction), -state.direction));
}

float3 arriving(State state, Light_iterator light)
{
    return swizzle<0, 1, 2>(light.tsl_contribution)
        * saturate(dot(state.normal, light.tsl_direction));
}

float ggx_visibility(float n_dot_l, float n_dot_v, float alpha)
{
    float a2 = alpha * alpha;
    return 0.5f / max(n_dot_l * sqrt(n_dot_v * n_dot_v * (1.0f - a2) + a2)
        + n_dot_v * sqrt(n_dot_l * n_dot_l * (1.0f - a2) + a2), 0.0001f);
}

float ggx_lobe(State state, Light_iterator light, float alpha)
{
    float3 half_way = normalize(light.tsl_direction - state.direction);
    float n_dot_l = saturate(dot(state.normal, light.tsl_direction));
    float n_dot_h = saturate(dot(state.normal, half_way));
    float a = max(alpha, 0.001f);
    float d = n_dot_h * n_dot_h * (a * a - 1.0f) + 1.0f;
    return a * a * 0.3183099f / (d * d) * ggx_visibility(n_dot_l, n_dot_v(state), a);
}

float3 dielectric_lit(State state, Light_iterator light, float ior, float alpha, float2 energy)
{
    float3 reflected = float3(dielectric_reflectance(v_dot_h(state, light), ior));
    return arriving(state, light) * reflected * ggx_gain(reflected, energy)
        * ggx_lobe(state, light, alpha);
}

float3 lambert_lit(State state, Light_iterator light)
{
    return arriving(state, light) * 0.3183099f;
}

// ---- shader -----------------------------------------------------------------
float4 Tile(State state, Light_list lights)
{
    float3 glaze = srgb_to_linear(swizzle<0, 1, 2>(glaze_map.lookup(state.texture_coordinate0
        * float2(4.0f))));
    float3 tinted_glaze = glaze * tint;
    float3 relief = swizzle<0, 1, 2>(relief_map.lookup(state.texture_coordinate0 * float2(4.0f)));
    float3 tilted = normal_map(relief, float2(1.0f), state.normal, state.texture_tangent,
        state.texture_binormal);
    float gloss_alpha = specular_roughness * specular_roughness;
    float2 gloss_energy = ggx_energy(dot(tilted, -state.direction), gloss_alpha);

    state.normal = tilted;
    float3 gloss_albedo = dielectric_albedo(state, 1.5f, gloss_alpha, gloss_energy);
    float3 gloss_rest = 1.0f - gloss_albedo;
    float3 diffuse_weight = gloss_rest * tinted_glaze;

    float3 color = float3(0.0f);
    for (int i = 0; i < lights.length; i++)
    {
        Light_iterator light = lights[i].eval(state);
        color += dielectric_lit(state, light, 1.5f, gloss_alpha, gloss_energy);
        color += diffuse_weight * lambert_lit(state, light);
    }
    return float4(color, 1.0f);
}

} // namespace Tile_shader
