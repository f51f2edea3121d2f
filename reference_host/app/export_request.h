// What the user asks the program for: the options of its commands.
#ifndef REFERENCE_HOST_APP_EXPORT_REQUEST_H
#define REFERENCE_HOST_APP_EXPORT_REQUEST_H

#include "reference_host/app/image_files.h"
#include "reference_host/app/replacement.h"
#include "reference_host/desktop/message_boxes.h"
#include "reference_host/desktop/panel_options.h"
#include "reference_host/host/export_scene.h"
#include "reference_host/host/render_settings.h"

#include <string>
#include <vector>

namespace reference_host
{

// What is exported and how, except for the exporter and the output.
struct Scene_request {
    std::string document;
    std::string node; // empty: the first surface material, else the first surface shader
    Lighting_request render;
    std::vector<std::string> search_path; // further folders for includes, images and user files
    Texture_paths texture_paths = Texture_paths::relative;
    std::string texture_base; // what relative names start from; empty: the exported file's folder
    Preferences preferences;
    Shader_kind_answer kind;
    Box_policy boxes;
    Overwrite_policy overwrite;
    std::vector<Option_setting> options; // of the exporter's panel
    bool is_dry_run = false;             // only says what would happen
    std::vector<std::string> arguments;  // that were given for all this, "--option=value"
};

} // namespace reference_host

#endif
