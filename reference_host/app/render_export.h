// Exports of a document for the renderer, through the plug-in as any other export.
#ifndef REFERENCE_HOST_APP_RENDER_EXPORT_H
#define REFERENCE_HOST_APP_RENDER_EXPORT_H

#include "reference_host/app/export_job.h"
#include "reference_host/render/document_exporter.h"
#include "reference_host/render/shader_source.h"

namespace reference_host
{

// What a picture of a document needs: a key and a fill light where neither the document nor the
// scene has a light, an environment where the scene names none, and images where they are.
void light_for_picture(Scene_request& scene, const Shader_graph& graph);

// The exported texts as the renderer takes them: an effect, or a vertex and a fragment shader. None
// when it draws no such files.
std::vector<Shader_source> drawable_texts(const Export_outcome& outcome);

// A document without lights gets a key and a fill light unless some are asked for; its shaders read
// the environment that is asked for, else one that does not exist, so that the renderer's sky
// stands in.
//
// Throws as the commands do (commands.h).
std::vector<Exported_shader> export_for_renderer(const Document_request& request,
                                                 const std::string& folder);

} // namespace reference_host

#endif
