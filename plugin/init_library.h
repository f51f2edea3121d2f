// The entry points of the library, by either of which the host finds the plug-in.
#ifndef PLUGIN_INIT_LIBRARY_H
#define PLUGIN_INIT_LIBRARY_H

#include "plugin/export_symbol.h"
#include "plugin/plugin.h"

// Makes a new plug-in object for the selector 0, which the caller owns (its release() does
// nothing); null for any other selector. Memory running out is the one exception that reaches the
// host.
TOVIRAEXPORT_EXPORT qz::base::Plugin* init_library(unsigned int selector);

// The same under an unmangled name.
extern "C" TOVIRAEXPORT_EXPORT qz::base::Plugin* initializer(unsigned int selector);

#endif
