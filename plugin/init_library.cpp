#include "plugin/init_library.h"

#include "plugin/tovira_exporter_plugin.h"

qz::base::Plugin* init_library(unsigned int selector)
{
    if (selector != 0)
        return nullptr;
    return new QZ::TOVIRAEXPORT::Tovira_exporter_plugin;
}

extern "C" qz::base::Plugin* initializer(unsigned int selector)
{
    return init_library(selector);
}
