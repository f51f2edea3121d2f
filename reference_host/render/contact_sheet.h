// Many pictures on one, each with its name under it.
#ifndef REFERENCE_HOST_RENDER_CONTACT_SHEET_H
#define REFERENCE_HOST_RENDER_CONTACT_SHEET_H

#include "reference_host/render/image.h"

#include <string>
#include <vector>

namespace reference_host
{

struct Named_picture {
    std::string name;
    Image image; // all of one size
};

// As wide as high, or a little wider; row by row. There must be a picture.
Image contact_sheet(const std::vector<Named_picture>& pictures);

} // namespace reference_host

#endif
