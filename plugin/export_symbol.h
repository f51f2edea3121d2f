// Marks what the library exports; everything else is hidden (see also plugin/toviraexport.map).
#ifndef PLUGIN_EXPORT_SYMBOL_H
#define PLUGIN_EXPORT_SYMBOL_H

#define TOVIRAEXPORT_EXPORT __attribute__((visibility("default")))

#endif
