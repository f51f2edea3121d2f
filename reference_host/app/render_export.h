// Exports of a document for the renderer, through the plug-in as any other export.
#ifndef REFERENCE_HOST_APP_RENDER_EXPORT_H
#define REFERENCE_HOST_APP_RENDER_EXPORT_H

#include "reference_host/render/document_exporter.h"

namespace reference_host
{

// A document without lights gets a key and a fill light unless some are asked for; its shaders read
// the environment that is asked for, else one that nobody has, so that the renderer's sky stands
// in.
//
// Throws as the commands do (commands.h).
std::vector<Exported_shader> export_for_renderer(const Document_request& request,
                                                 const std::string& folder);

} // namespace reference_host

#endif
