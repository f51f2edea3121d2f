#include "reference_host/render/gl_textures.h"

#include "reference_host/render/placeholder_texture.h"

#include <algorithm>
#include <cmath>

namespace reference_host
{
namespace
{

// ---- smaller copies ---------------------------------------------------------
// They are made here: OpenGL would make machine code first, which takes longer than all the rest.

// The two texels that a texel of the smaller copy lies between, along one side.
struct Between {
    std::size_t first, second;
    float share; // of the second
};

std::vector<Between> between(int larger, int smaller)
{
    std::vector<Between> result;
    for (int i = 0; i < smaller; ++i) {
        const float place =
            (static_cast<float>(i) + 0.5F) * static_cast<float>(larger) / smaller - 0.5F;
        const float first = std::floor(place);
        const auto at = static_cast<std::size_t>(first);
        result.push_back(
            {at, std::min(at + 1, static_cast<std::size_t>(larger - 1)), place - first});
    }
    return result;
}

float mean(float a, float b, float share)
{
    return a + (b - a) * share;
}

void take(unsigned char& channel, float value)
{
    channel = static_cast<unsigned char>(value + 0.5F);
}

void take(float& channel, float value)
{
    channel = value;
}

template<typename Texel>
std::vector<Texel> smaller_copy(const std::vector<Texel>& texels, int& width, int& height)
{
    const std::vector<Between> columns = between(width, std::max(width / 2, 1));
    const std::vector<Between> rows = between(height, std::max(height / 2, 1));
    std::vector<Texel> copy;
    copy.reserve(columns.size() * rows.size());
    for (const Between& row : rows) {
        const Texel* const upper = &texels[row.first * static_cast<std::size_t>(width)];
        const Texel* const lower = &texels[row.second * static_cast<std::size_t>(width)];
        for (const Between& column : columns) {
            Texel& texel = copy.emplace_back();
            for (std::size_t i = 0; i < texel.size(); ++i)
                take(texel[i],
                     mean(mean(upper[column.first][i], upper[column.second][i], column.share),
                          mean(lower[column.first][i], lower[column.second][i], column.share),
                          row.share));
        }
    }
    width = static_cast<int>(columns.size());
    height = static_cast<int>(rows.size());
    return copy;
}

// Loads one level after the other, down to a single texel.
template<typename Texel>
void load_levels(GLenum target, std::vector<Texel> texels, int width, int height)
{
    constexpr bool is_float = std::tuple_size_v<Texel> == 3;
    for (GLint level = 0;; ++level) {
        glTexImage2D(target, level, is_float ? GL_RGB32F : GL_RGBA8, width, height, 0,
                     is_float ? GL_RGB : GL_RGBA, is_float ? GL_FLOAT : GL_UNSIGNED_BYTE,
                     texels.data());
        if (width == 1 && height == 1)
            return;
        texels = smaller_copy(texels, width, height);
    }
}

// ---- textures ---------------------------------------------------------------

void set_filters(GLenum target, GLint wrapping)
{
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_WRAP_S, wrapping);
    glTexParameteri(target, GL_TEXTURE_WRAP_T, wrapping);
}

// The depth that order-independent transparency peels from: nothing is nearer than the first layer.
constexpr char peeled_depth[] = "oit_depth_map";

Shared_texture load_image(const Image& image)
{
    auto texture = std::make_shared<Gl_texture>(GL_TEXTURE_2D);
    texture->bind();
    load_levels(GL_TEXTURE_2D, image.pixels, image.width, image.height);
    set_filters(GL_TEXTURE_2D, GL_REPEAT);
    return texture;
}

} // namespace

Gl_texture::Gl_texture(GLenum target) : m_target(target)
{
    glGenTextures(1, &m_id);
}

Gl_texture::~Gl_texture()
{
    glDeleteTextures(1, &m_id);
}

void Gl_texture::bind() const
{
    glBindTexture(m_target, m_id);
}

Shared_texture load_cube_map(const Environment& environment, Cube_up cube_up)
{
    constexpr int side = 256;
    auto texture = std::make_shared<Gl_texture>(GL_TEXTURE_CUBE_MAP);
    texture->bind();
    for (int face = 0; face < 6; ++face)
        load_levels(GL_TEXTURE_CUBE_MAP_POSITIVE_X + static_cast<GLenum>(face),
                    environment.cube_face(face, side, cube_up), side, side);
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
    set_filters(GL_TEXTURE_CUBE_MAP, GL_CLAMP_TO_EDGE);
    return texture;
}

bool Gl_textures::load(const Uniform& sampler)
{
    if (sampler.type != GL_SAMPLER_2D && sampler.type != GL_SAMPLER_CUBE)
        return false;
    glUniform1i(sampler.location, static_cast<GLint>(m_units.size()));
    m_units.push_back(sampler.type == GL_SAMPLER_CUBE ? cube_map_for(sampler.name)
                                                      : texture_for(sampler.name));
    return true;
}

void Gl_textures::bind() const
{
    GLenum unit = GL_TEXTURE0;
    for (const Shared_texture& texture : m_units) {
        glActiveTexture(unit++);
        texture->bind();
    }
}

Shared_texture Gl_textures::cube_map_for(const std::string& sampler) const
{
    const auto own = m_drawing.cube_maps.find(sampler);
    const auto& environment =
        own == m_drawing.cube_maps.end() ? m_drawing.environment : own->second;
    const Cube_up cube_up = m_drawing.conventions.rotated_cube_maps ? Cube_up::minus_z : Cube_up::y;
    return environment == own_sky() ? m_sky(cube_up) : load_cube_map(*environment, cube_up);
}

Shared_texture Gl_textures::texture_for(const std::string& sampler)
{
    const auto [known, is_new] = m_loaded.try_emplace(image_for(sampler));
    if (!is_new)
        return known->second;
    Image image = *known->first;
    if (!m_drawing.conventions.flipped_textures)
        flip_rows(image); // OpenGL has v = 0 at the lower edge and wants that row first
    known->second = load_image(image);
    return known->second;
}

std::shared_ptr<const Image> Gl_textures::image_for(const std::string& sampler) const
{
    const auto image = m_drawing.textures.find(sampler);
    if (image != m_drawing.textures.end())
        return image->second;
    if (sampler.find(peeled_depth) != std::string::npos)
        return std::make_shared<Image>(1, 1);
    const auto label = m_drawing.texture_labels.find(sampler);
    return std::make_shared<Image>(
        labelled_checker(label == m_drawing.texture_labels.end() ? sampler : label->second));
}

} // namespace reference_host
