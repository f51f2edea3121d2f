#include "reference_host/app/command_line.h"

#include "reference_host/app/commands.h"
#include "reference_host/app/list_command.h"
#include "reference_host/app/opened_document.h"
#include "reference_host/document/value_parser.h"
#include "reference_host/render/render_command.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace reference_host
{
namespace
{

constexpr int done = 0;
constexpr int not_done = 1;
constexpr int wrong_usage = 2;

// An option that is given any number of times, each time with one value that `take` reads. `take`
// throws std::invalid_argument when it cannot.
template<typename Take>
void add_repeated(CLI::App& app, const char* name, const char* help, const char* form, Take take)
{
    app.add_option_function<std::vector<std::string>>(
           name,
           [take, name, form](const std::vector<std::string>& values) {
               for (const std::string& value : values) {
                   if (!take(value))
                       throw CLI::ValidationError(name, "'" + value + "' is not " + form);
               }
           },
           help)
        ->type_name(form)
        ->allow_extra_args(false);
}

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
    const std::optional<Value> color = parse_value(Type::color4, text);
    if (color)
        std::copy_n(color->numbers.begin(), 4, render.ambient.begin());
    return color.has_value();
}

bool take_setting(const std::string& text, std::vector<Option_setting>& settings)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        return false;
    settings.push_back({text.substr(0, equals), text.substr(equals + 1)});
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

bool take_kind(const std::string& text, Shader_kind_answer& kind)
{
    kind.from = text == "none" ? Shader_kind_answer::From::none : Shader_kind_answer::From::fixed;
    kind.text = text;
    return true;
}

template<typename Choice>
void add_choice(CLI::App& app, const char* name, Choice& choice, const char* help,
                const std::map<std::string, Choice>& words)
{
    std::string form;
    for (const auto& word : words)
        form += (form.empty() ? "" : "|") + word.first;
    app.add_option_function<std::string>(
           name,
           [&choice, words, name, form](const std::string& text) {
               const auto word = words.find(text);
               if (word == words.end())
                   throw CLI::ValidationError(name, "'" + text + "' is not " + form);
               choice = word->second;
           },
           help)
        ->type_name(form);
}

void add_search_path(CLI::App& app, std::vector<std::string>& search_path)
{
    app.add_option("--search-path", search_path,
                   "A further folder for includes, images and user_copyright.txt")
        ->type_name("DIR")
        ->allow_extra_args(false);
}

void add_plugin(CLI::App& app, std::string& plugin)
{
    app.add_option("--plugin", plugin, "The plug-in (default: toviraexport.so beside this program)")
        ->type_name("PATH");
}

void add_exporter(CLI::App& app, std::string& exporter)
{
    app.add_option("--exporter", exporter,
                   "The exporter: its name, a part of it that fits only one, or its index")
        ->type_name("EXPORTER")
        ->required();
}

// What describes the scene and is common to all exports.
void add_scene_options(CLI::App& app, Scene_request& scene)
{
    app.add_option("FILE", scene.document, "A MaterialX document")->required();
    app.add_option("--node", scene.node,
                   "The node to export (default: the first surface material, else shader)")
        ->type_name("NAME");
    add_repeated(app, "--light",
                 "A light of the document, or a new one; TYPE: directional, "
                 "point, spot or 0 to 2; KEY: position, direction, color, intensity, "
                 "cone (full angle in degrees), limit (distance, 0 none). Also NAME:TYPE:CONE:LIMIT",
                 "NAME[:TYPE[:KEY=VALUE,...]]",
                 [&scene](const std::string& text) { return take_light(text, scene.render); });
    app.add_option("--environment", scene.render.environment, "The environment shader of the document, or a new one, of an image")
        ->type_name("NAME[:FILE]");
    app.add_option("--volume", scene.render.volume, "The volume shader")->type_name("NAME");
    add_repeated(app, "--ambient", "The scene's ambient colour", "R,G,B,A",
                 [&scene](const std::string& text) { return take_ambient(text, scene.render); });
    add_search_path(app, scene.search_path);
    add_repeated(
        app, "--preference", "A preference of the editor; none: it has no preferences at all",
        "NAME=true|false",
        [&scene](const std::string& text) { return take_preference(text, scene.preferences); });
    add_repeated(app, "--kind", "Overrides the node's shader kind; none: reports null", "KIND",
                 [&scene](const std::string& text) { return take_kind(text, scene.kind); });
    add_choice<Texture_paths>(app, "--texture-paths", scene.texture_paths,
                              "How image files are named in the output (default: as-is)",
                              {{"relative", Texture_paths::relative},
                               {"absolute", Texture_paths::absolute},
                               {"as-is", Texture_paths::as_is}});
}

void add_answers(CLI::App& app, Scene_request& scene)
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
    add_repeated(app, "--set", "An option of the exporter's panel", "OPTION=VALUE",
                 [&scene](const std::string& text) { return take_setting(text, scene.options); });
}

// Everything that the commands are asked with.
struct Requests {
    std::string plugin;
    bool lists_as_json = false;
    Scene_request nodes, window;
    Export_command exported;
    Batch_command batch;
    Panel_command panel;
};

void add_list(CLI::App& app, std::string& plugin, bool& as_json, int& status)
{
    CLI::App* command = app.add_subcommand("list", "Lists the exporters");
    add_plugin(*command, plugin);
    command->add_flag("--json", as_json, "With what each exporter takes and writes, as JSON");
    command->callback([&] { status = list_exporters(plugin, as_json); });
}

void add_nodes(CLI::App& app, Scene_request& request, int& status)
{
    CLI::App* command = app.add_subcommand("nodes", "Lists the nodes of a document");
    command->add_option("FILE", request.document, "A MaterialX document")->required();
    add_search_path(*command, request.search_path);
    command->callback([&] { status = list_nodes(request.document, request.search_path); });
}

void add_export(CLI::App& app, Export_command& request, int& status)
{
    CLI::App* command = app.add_subcommand("export", "Exports a node through one exporter");
    add_scene_options(*command, request.scene);
    add_answers(*command, request.scene);
    add_exporter(*command, request.exporter);
    command
        ->add_option("--output", request.output,
                     "The export file name; a folder: the node's name in it; -: standard output")
        ->type_name("PATH")
        ->required();
    add_plugin(*command, request.plugin);
    command->callback([&] { status = export_document(request); });
}

void add_batch(CLI::App& app, Batch_command& request, int& status)
{
    CLI::App* command = app.add_subcommand("batch", "Exports a node through several exporters");
    add_scene_options(*command, request.scene);
    add_answers(*command, request.scene);
    command->add_option("--exporter", request.exporters, "One of them (default: all)")
        ->type_name("EXPORTER")
        ->allow_extra_args(false);
    command->add_option("--output", request.folder, "A folder; each exporter gets its own in it")
        ->type_name("FOLDER")
        ->required();
    add_plugin(*command, request.plugin);
    command->callback([&] { status = export_batch(request); });
}

void add_panel(CLI::App& app, Panel_command& request, int& status)
{
    CLI::App* command = app.add_subcommand("panel", "Shows an exporter's option panel");
    add_exporter(*command, request.exporter);
    command->add_option("--screenshot", request.screenshot, "Writes a picture of it")
        ->type_name("FILE.png");
    command->add_option("--width", request.width, "The width of the window's area in pixels")
        ->check(CLI::Range(1, 4000));
    add_plugin(*command, request.plugin);
    command->callback([&] { status = show_panel(request); });
}

void add_window(CLI::App& app, Scene_request& scene, std::string& plugin, int& status)
{
    CLI::App* command = app.add_subcommand("window", "Opens a window that exports a document");
    add_scene_options(*command, scene);
    add_plugin(*command, plugin);
    command->callback([&] { status = show_window(scene, plugin); });
}

// The requests are filled while the command line is parsed, and must outlive that.
void add_commands(CLI::App& app, Requests& requests, int& status)
{
    add_list(app, requests.plugin, requests.lists_as_json, status);
    add_nodes(app, requests.nodes, status);
    add_export(app, requests.exported, status);
    add_batch(app, requests.batch, status);
    add_panel(app, requests.panel, status);
    add_window(app, requests.window, requests.plugin, status);
    add_render_commands(app, status);
}

} // namespace

int run_command_line(int argc, char** argv)
{
    CLI::App app("A shader-graph editor in small: exports MaterialX documents through the plug-in",
                 "shader-export");
    app.require_subcommand(1);
    Requests requests;
    int status = done;
    try {
        add_commands(app, requests, status);
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? done : wrong_usage;
    } catch (const Document_failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return not_done;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "shader-export: error: %s\n", error.what());
        return wrong_usage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "shader-export: error: %s\n", error.what());
        return not_done;
    }
    return status;
}

} // namespace reference_host
