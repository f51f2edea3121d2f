// What surrounds the object: a sky of our own, or an image that holds all directions.
//
// An image is a latitude-longitude map, twice as wide as high: its upper edge is up (+y), its
// middle is where the camera looks (-z), and to the right of the middle is +x.
#ifndef REFERENCE_HOST_RENDER_ENVIRONMENT_H
#define REFERENCE_HOST_RENDER_ENVIRONMENT_H

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

using Color = std::array<float, 3>;
using Direction = std::array<double, 3>;

// What a cube map calls up: its y axis, or the far end of its z axis, for shaders that turn a
// direction (x, y, z) into (x, z, -y) before they look it up.
enum class Cube_up { y, minus_z };

class Environment
{
public:
    // A blue sky with a soft window above brown ground.
    Environment() = default;

    // Grey of radiance `horizon` + `rise` y from the direction (x, y, z).
    static Environment gradient(float horizon, float rise);

    // Reads a PNG, JPEG or Radiance HDR file; null with the reason when that fails or the image is
    // not about twice as wide as high.
    static std::shared_ptr<const Environment> read(const std::string& file, std::string& reason);

    // As a shader finds it in the cube map: the values of the file.
    Color value(const Direction& direction) const;

    // As the eye sees it: PNG and JPEG files hold encoded light.
    Color light(const Direction& direction) const;

    // Texels of a cube map's face, in OpenGL's order (+x, -x, +y, -y, +z, -z) and orientation.
    std::vector<Color> cube_face(int face, int side, Cube_up cube_up) const;

private:
    int m_width = 0; // 0: no image, but the gradient or else the sky
    int m_height = 0;
    std::optional<std::array<float, 2>> m_gradient;
    bool m_is_encoded = false;
    std::vector<Color> m_pixels;
};

// The sky of our own. It is one object, so that what was made of it can be kept.
const std::shared_ptr<const Environment>& own_sky();

} // namespace reference_host

#endif
