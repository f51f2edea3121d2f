#include "reference_host/generator/swrc_prelude.h"

namespace reference_host
{

const char* swrc_prelude()
{
    return R"(
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

// ---- vectors and matrices ------------------------------------------------------

template <std::size_t N>
struct vector_base;

template <>
struct vector_base<2> {
    float x, y;
};
template <>
struct vector_base<3> {
    float x, y, z;
};
template <>
struct vector_base<4> {
    float x, y, z, w;
};

template <std::size_t N>
struct vector : vector_base<N> {
    vector() : vector(0.0f) {}
    explicit vector(float all)
    {
        for (std::size_t i = 0; i < N; ++i)
            (*this)[i] = all;
    }
    template <class... Parts, class = std::enable_if_t<(sizeof...(Parts) > 1)>>
    vector(const Parts&... parts)
    {
        std::size_t next = 0;
        (append(next, parts), ...);
    }

    float& operator[](std::size_t i) { return *(&this->x + i); }
    float operator[](std::size_t i) const { return *(&this->x + i); }

private:
    void append(std::size_t& next, float part) { (*this)[next++] = part; }
    template <std::size_t M>
    void append(std::size_t& next, const vector<M>& part)
    {
        for (std::size_t i = 0; i < M; ++i)
            append(next, part[i]);
    }
};

using float2 = vector<2>;
using float3 = vector<3>;
using float4 = vector<4>;
)";
}

const char* swrc_lights()
{
    return "";
}

} // namespace reference_host
