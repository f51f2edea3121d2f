// Textures that stand in for files that are not there.
#ifndef REFERENCE_HOST_RENDER_PLACEHOLDER_TEXTURE_H
#define REFERENCE_HOST_RENDER_PLACEHOLDER_TEXTURE_H

#include "reference_host/render/image.h"

#include <string>

namespace reference_host
{

// A checker of 8 x 8 fields in two greys with `label` across its middle. The label is shown in
// capitals; other characters than letters and digits become a line at the foot of their place, and
// what does not fit is cut off.
Image labelled_checker(const std::string& label);

} // namespace reference_host

#endif
