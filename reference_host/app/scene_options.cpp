#include "reference_host/app/scene_options.h"

#include "reference_host/app/messages.h"
#include "reference_host/app/option_forms.h"
#include "reference_host/document/value_parser.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace reference_host
{
namespace
{

bool take_light(const std::string& text, Lighting_request& render)
{
    std::string reason;
    const std::optional<Light_request> light = parse_light(text, reason);
    if (!light)
        throw CLI::ValidationError("--light", "'" + text + "': " + reason);
    render.lights.push_back(*light);
    return true;
}

bool take_ambient(const std::string& text, Lighting_request& render)
{
    const std::optional<Value> color = parse_value(Value_type::color4, text);
    if (color)
        std::copy_n(color->numbers.begin(), 4, render.ambient.begin());
    return color.has_value();
}

// `exporter` is meant where the text names none.
bool take_setting(const std::string& text, const std::string& exporter,
                  std::vector<Option_setting>& settings)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        return false;
    // A colon at the end belongs to the label of an option.
    const size_t colon = text.rfind(':', equals == 0 ? 0 : equals - 2);
    const bool has_exporter = colon != std::string::npos && colon > 0 && equals > 1;
    const size_t name = has_exporter ? colon + 1 : 0;
    settings.push_back({has_exporter ? text.substr(0, colon) : exporter,
                        text.substr(name, equals - name), text.substr(equals + 1)});
    return true;
}

bool take_preference(const std::string& text, Preferences& preferences)
{
    if (text == "none") {
        preferences.exist = false;
        return true;
    }
    const size_t equals = text.find('=');
    const std::string value = equals == std::string::npos ? "" : text.substr(equals + 1);
    if (value != "true" && value != "false")
        return false;
    preferences.values[text.substr(0, equals)] = value == "true";
    return true;
}

Shader_kind_answer fixed_kind(const char* kind)
{
    return {Shader_kind_answer::From::fixed, kind};
}

} // namespace

void add_search_path(CLI::App& app, std::vector<std::string>& search_path)
{
    add_repeated(app, "-I,--search-path",
                 "A further folder for includes, images and user_copyright.txt", "DIR",
                 [&search_path](const std::string& folder) {
                     std::error_code failure;
                     if (!std::filesystem::is_directory(folder, failure))
                         print_warning("the search path '" + folder + "' is not a folder");
                     search_path.push_back(folder);
                     return true;
                 });
}

void add_plugin(CLI::App& app, std::string& plugin)
{
    app.add_option("--plugin", plugin,
                   "The plug-in (default: toviraexport.so as built or installed with this program)")
        ->type_name("PATH");
}

void add_exporter(CLI::App& app, std::string& exporter)
{
    app.add_option("-e,--exporter", exporter,
                   "The exporter: its name, a part of it that fits only one, or its index")
        ->type_name("EXPORTER")
        ->required();
}

void add_node(CLI::App& app, Scene_request& scene)
{
    app.add_option("-n,--node", scene.node,
                   "The node to export (default: the first surface material, else shader)")
        ->type_name("NAME");
}

void add_document(CLI::App& app, Scene_request& scene)
{
    app.add_option("FILE", scene.document, "A MaterialX document")->required();
    add_node(app, scene);
}

void add_surroundings(CLI::App& app, Scene_request& scene)
{
    add_repeated(
        app, "-l,--light",
        "A light of the document, or a new one; TYPE: directional, point, spot or 0 to 2; KEY: "
        "position, direction, color, intensity, cone (full angle in degrees), limit (distance, 0 "
        "none). Also NAME:TYPE:CONE:LIMIT",
        "NAME[:TYPE[:KEY=VALUE,...]]",
        [&scene](const std::string& text) { return take_light(text, scene.render); });
    app.add_option("--environment", scene.render.environment,
                   "The environment shader of the document, or a new one made of an image")
        ->type_name("NAME[:FILE]");
    app.add_option("--volume", scene.render.volume, "The volume shader")->type_name("NAME");
    add_parsed(app, "--ambient", "The scene's ambient colour", "R,G,B,A",
               [&scene](const std::string& text) { return take_ambient(text, scene.render); });
    add_search_path(app, scene.search_path);
}

void add_scene_options(CLI::App& app, Scene_request& scene)
{
    add_surroundings(app, scene);
    add_repeated(app, "--preference", "A preference of Tovira; none: it has no preferences at all",
                 "NAME=true|false", [&scene](const std::string& text) {
                     return take_preference(text, scene.preferences);
                 });
    add_choice<Shader_kind_answer>(
        app, "--kind", scene.kind,
        "The kind of the shader, instead of the node's own; none: it does not say",
        {{"surface", fixed_kind("surface")},
         {"environment", fixed_kind("environment")},
         {"lens", fixed_kind("lens")},
         {"light", fixed_kind("light")},
         {"volume", fixed_kind("volume")},
         {"none", {Shader_kind_answer::From::none, "none"}}});
    add_choice<Texture_paths>(
        app, "--texture-paths", scene.texture_paths,
        "How the output names images: from its folder (the default), from the root, as the "
        "document does, or as copies that are made beside it",
        {{"relative", Texture_paths::relative},
         {"absolute", Texture_paths::absolute},
         {"as-is", Texture_paths::as_is},
         {"copy", Texture_paths::copy}});
}

void add_answers(CLI::App& app, Scene_request& scene, const std::string& exporter)
{
    add_choice<Overwrite>(
        app, "--overwrite", scene.overwrite.overwrite,
        "When a file exists: ask (the default; without a terminal no), replace it, fail, leave the "
        "export out, or keep the old file as NAME.~1~",
        {{"ask", Overwrite::ask},
         {"yes", Overwrite::yes},
         {"no", Overwrite::no},
         {"skip", Overwrite::skip},
         {"backup", Overwrite::backup}});
    app.add_flag("--overwrite-edited", scene.overwrite.edited,
                 "With --overwrite yes: replace also files that were edited since they were "
                 "exported");
    add_choice<Missing>(app, "--missing", scene.boxes.missing,
                        "The answer when lights or an environment are missing (default: continue)",
                        {{"continue", Missing::proceed}, {"cancel", Missing::cancel}});
    add_repeated(app, "-s,--set",
                 "An option of the exporter's panel; EXPORTER *: of all that have it",
                 "[EXPORTER:]OPTION=VALUE", [&scene, exporter](const std::string& text) {
                     return take_setting(text, exporter, scene.options);
                 });
    app.add_flag("--dry-run", scene.is_dry_run,
                 "Write nothing; report what would happen, file by file");
}

std::vector<std::string> given_arguments(const CLI::App& app,
                                         const std::vector<Option_setting>& settings)
{
    std::vector<std::string> arguments;
    for (const char* name : {"--light", "--environment", "--volume", "--ambient", "--search-path",
                             "--preference", "--kind", "--texture-paths", "--missing"}) {
        for (const std::string& value : app.get_option(name)->results())
            arguments.push_back(std::string(name) + "=" + value);
    }
    for (const Option_setting& setting : settings)
        arguments.push_back("--set=" + setting.exporter + ":" + setting.name + "=" + setting.value);
    return arguments;
}

} // namespace reference_host
