// The kinds of lights that a scene may have.
#ifndef REFERENCE_HOST_DOCUMENT_LIGHT_KIND_H
#define REFERENCE_HOST_DOCUMENT_LIGHT_KIND_H

namespace reference_host
{

// With their codes at the border to the plug-in.
enum class Light_kind { directional = 0, point = 1, spot = 2 };

} // namespace reference_host

#endif
