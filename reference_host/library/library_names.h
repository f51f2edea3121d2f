// The names that are taken in every module: those of the notation and of the library's functions.
#ifndef REFERENCE_HOST_LIBRARY_LIBRARY_NAMES_H
#define REFERENCE_HOST_LIBRARY_LIBRARY_NAMES_H

#include "reference_host/shading/names.h"

namespace reference_host
{

const Reserved_names& library_names();

} // namespace reference_host

#endif
