// The two functions by which a host finds the plug-in in a library.
#ifndef REFERENCE_HOST_CHECK_ENTRIES_H
#define REFERENCE_HOST_CHECK_ENTRIES_H

#include "plugin/plugin.h"

namespace reference_host
{

using Entry_function = qz::base::Plugin* (*)(unsigned int selector);

constexpr const char* unmangled_entry = "initializer";
constexpr const char* mangled_entry = "_Z12init_libraryj"; // init_library(unsigned int)
constexpr unsigned int plugin_selector = 0;                // the only one that gives a plug-in

} // namespace reference_host

#endif
