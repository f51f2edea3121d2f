// The text of exporters/catia_lights.txt: CATIA's directional, point and spot light.
#ifndef EXPORTERS_CATIA_LIGHTS_H
#define EXPORTERS_CATIA_LIGHTS_H

namespace QZ
{
namespace TOVIRAEXPORT
{

// NUL-terminated ASCII; embedded when the library is built.
extern const char catia_lights[];

} // namespace TOVIRAEXPORT
} // namespace QZ

#endif
