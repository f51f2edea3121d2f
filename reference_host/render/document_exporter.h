// How the renderer gets the shaders of a document: whoever runs the exporters gives it this.
#ifndef REFERENCE_HOST_RENDER_DOCUMENT_EXPORTER_H
#define REFERENCE_HOST_RENDER_DOCUMENT_EXPORTER_H

#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

struct Document_request {
    std::string document;
    std::string node;                // empty: the usual one
    bool all = false;                // every material instead
    std::string target = "glsl";     // glsl, cgfx or hlsl
    std::vector<std::string> lights; // as on the command line; none: see default lights
    std::string environment_file;    // empty: the renderer's sky
    std::vector<std::string> search_path;
};

struct Exported_shader {
    std::string name;
    std::vector<std::string> files; // as Render_request wants them; empty: the export failed
};

// Exports into the folder. What went wrong with one shader is told on standard error.
using Document_exporter =
    std::function<std::vector<Exported_shader>(const Document_request&, const std::string& folder)>;

} // namespace reference_host

#endif
