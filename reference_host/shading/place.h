// Places in files.
#ifndef REFERENCE_HOST_SHADING_PLACE_H
#define REFERENCE_HOST_SHADING_PLACE_H

#include <string>

namespace reference_host
{

// Where something stands, for messages.
struct Place {
    std::string file;
    int line = 0;
};

} // namespace reference_host

#endif
