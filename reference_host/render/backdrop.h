// What stands behind the drawn object.
#ifndef REFERENCE_HOST_RENDER_BACKDROP_H
#define REFERENCE_HOST_RENDER_BACKDROP_H

#include "reference_host/render/environment.h"
#include "reference_host/render/linear_picture.h"
#include "reference_host/render/view.h"

namespace reference_host
{

// Fills what the alpha of the picture leaves free. Alpha stays.
void put_before_backdrop(Linear_picture& picture, const View& view, const Environment& environment);

} // namespace reference_host

#endif
