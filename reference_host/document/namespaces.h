// The namespaces of included files: "plain" in a file with namespace="lib" is "lib:plain" to
// others.
#ifndef REFERENCE_HOST_DOCUMENT_NAMESPACES_H
#define REFERENCE_HOST_DOCUMENT_NAMESPACES_H

#include <pugixml.hpp>

namespace reference_host
{

// Gives the outermost elements of a file, and what names them within the file, their full names.
// Does nothing without a namespace. The categories of definitions stay as they are.
void apply_namespace(pugi::xml_node root);

} // namespace reference_host

#endif
