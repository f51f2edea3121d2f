// How an exported shader is looked at.
#ifndef REFERENCE_HOST_RENDER_VIEW_H
#define REFERENCE_HOST_RENDER_VIEW_H

#include <array>

namespace reference_host
{

enum class Shape { sphere, plane, cube, ball };

// What is behind the object: one color, a checker of two greys, or what surrounds it.
enum class Backdrop { plain, checker, environment };

// Looks at the origin, from (0, 0, distance) unless it is moved around it.
struct Camera {
    double field_of_view = 44; // height and width in degrees; 40 leaves a sphere hardly a margin
    double yaw = 0;            // degrees to the right of the z axis
    double pitch = 0;          // degrees above it
    double distance = 3;       // from the origin
};

struct View {
    Shape shape = Shape::sphere;
    Camera camera;
    Backdrop backdrop = Backdrop::plain;
    std::array<float, 3> background = {0.13F, 0.135F, 0.145F}; // linear; of a plain backdrop
    int samples = 3; // across and down each pixel, 1 to 4; 1: one in its middle
};

} // namespace reference_host

#endif
