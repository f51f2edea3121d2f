#include "reference_host/app/command_line.h"

#include "reference_host/app/commands.h"
#include "reference_host/app/ir_command.h"
#include "reference_host/app/list_command.h"
#include "reference_host/app/messages.h"
#include "reference_host/app/render_export.h"
#include "reference_host/app/usage_error.h"
#include "reference_host/check/check_command.h"
#include "reference_host/document/value_parser.h"
#include "reference_host/render/render_command.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
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

bool take_kind(const std::string& text, Shader_kind_answer& kind)
{
    constexpr const char* known[] = {"surface", "environment", "lens", "light", "volume", "none"};
    if (std::find(std::begin(known), std::end(known), text) == std::end(known))
        return false;
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
    add_repeated(app, "--search-path",
                 "A further folder for includes, images and user_copyright.txt", "DIR",
                 [&search_path](const std::string& folder) {
                     std::error_code failure;
                     if (!std::filesystem::is_directory(folder, failure))
                         print_warning("the search path '" + folder + "' is no folder");
                     search_path.push_back(folder);
                     return true;
                 });
}

void add_plugin(CLI::App& app, std::string& plugin)
{
    app.add_option(
           "--plugin", plugin,
           "The plug-in (default: what TOVIRAEXPORT_PLUGIN names, else toviraexport.so as built "
           "or installed with this program)")
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
void add_document(CLI::App& app, Scene_request& scene)
{
    app.add_option("FILE", scene.document, "A MaterialX document")->required();
    app.add_option("--node", scene.node,
                   "The node to export (default: the first surface material, else shader)")
        ->type_name("NAME");
}

void add_surroundings(CLI::App& app, Scene_request& scene)
{
    add_repeated(
        app, "--light",
        "A light of the document, or a new one; TYPE: directional, "
        "point, spot or 0 to 2; KEY: position, direction, color, intensity, "
        "cone (full angle in degrees), limit (distance, 0 none). Also NAME:TYPE:CONE:LIMIT",
        "NAME[:TYPE[:KEY=VALUE,...]]",
        [&scene](const std::string& text) { return take_light(text, scene.render); });
    app.add_option("--environment", scene.render.environment,
                   "The environment shader of the document, or a new one, of an image")
        ->type_name("NAME[:FILE]");
    app.add_option("--volume", scene.render.volume, "The volume shader")->type_name("NAME");
    add_search_path(app, scene.search_path);
}

void add_scene_options(CLI::App& app, Scene_request& scene)
{
    add_surroundings(app, scene);
    add_repeated(app, "--ambient", "The scene's ambient colour", "R,G,B,A",
                 [&scene](const std::string& text) { return take_ambient(text, scene.render); });
    add_repeated(
        app, "--preference", "A preference of the editor; none: it has no preferences at all",
        "NAME=true|false",
        [&scene](const std::string& text) { return take_preference(text, scene.preferences); });
    add_repeated(app, "--kind", "Overrides the node's shader kind; none: reports null",
                 "surface|environment|lens|light|volume|none",
                 [&scene](const std::string& text) { return take_kind(text, scene.kind); });
    add_choice<Texture_paths>(
        app, "--texture-paths", scene.texture_paths,
        "How the output names images: from its folder (the default), from the "
        "root, as the document does, or as copies that are made beside it",
        {{"relative", Texture_paths::relative},
         {"absolute", Texture_paths::absolute},
         {"as-is", Texture_paths::as_is},
         {"copy", Texture_paths::copy}});
}

// `exporter` is what settings are meant for that name none: all, strictly, or "*".
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
    add_repeated(app, "--set", "An option of the exporter's panel; EXPORTER *: of all that have it",
                 "[EXPORTER:]OPTION=VALUE", [&scene, exporter](const std::string& text) {
                     return take_setting(text, exporter, scene.options);
                 });
    app.add_flag("--dry-run", scene.is_dry_run, "Say what would happen, file by file");
}

// What was given of the options that decide what is in the files.
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

// Everything that the commands are asked with.
struct Requests {
    std::string plugin;
    bool lists_as_json = false;
    Scene_request nodes, window;
    Export_command exported;
    Batch_command batch;
    Plan_command plan;
    Panel_command panel;
    Ir_command ir;
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

void add_ir(CLI::App& app, Ir_command& request, int& status)
{
    CLI::App* command = app.add_subcommand(
        "ir", "Prints what the compiler makes of a node, in the shading notation");
    command->add_option("FILE", request.scene.document, "A MaterialX document")->required();
    command
        ->add_option("--material,--node", request.scene.node,
                     "The node (default: the first surface material, else shader)")
        ->type_name("NAME");
    std::string phases;
    for (const std::string& name : phase_names())
        phases += (phases.empty() ? "" : "|") + name;
    command->add_option("--after", request.phase, "After which pass (default: lower)")
        ->type_name(phases);
    command
        ->add_option("--target", request.target,
                     "On the way to a text for which target (default: GL)")
        ->check(CLI::IsMember({"FX", "GL", "Swrc"}))
        ->type_name("FX|GL|Swrc");
    add_surroundings(*command, request.scene);
    command->callback([&] { status = print_module(request); });
}

void add_export(CLI::App& app, Export_command& request, int& status)
{
    CLI::App* command = app.add_subcommand("export", "Exports a node through one exporter");
    add_document(*command, request.scene);
    add_scene_options(*command, request.scene);
    add_answers(*command, request.scene, {});
    add_exporter(*command, request.exporter);
    command
        ->add_option("--output", request.output,
                     "The export file name; a folder: the node's name in it; -: standard output")
        ->type_name("PATH")
        ->required();
    command->add_flag("--parents", request.makes_folder,
                      "Make the folder of the output when it is missing");
    command->add_option("--depfile", request.depfile, "List what was read, as compilers do")
        ->type_name("FILE");
    add_plugin(*command, request.plugin);
    command->callback([&request, command, &status] {
        request.scene.arguments = given_arguments(*command, request.scene.options);
        status = export_document(request);
    });
}

void add_batch_reports(CLI::App& app, Batch_command& request)
{
    app.add_option("--report", request.report, "Write what happened to each item, as JSON")
        ->type_name("FILE.json");
    app.add_option("--junit", request.junit, "Write it as build servers read it")
        ->type_name("FILE.xml");
    app.add_flag("-q,--quiet", request.verbosity.is_quiet, "Say only what went wrong");
    app.add_flag("-v,--verbose", request.verbosity.is_verbose, "Say also each item and its time");
}

// What makes the items of a batch.
void add_batch_items(CLI::App& app, Batch_command& request)
{
    app.add_option("INPUT", request.inputs,
                   "MaterialX documents, folders with some; -: a list on standard input")
        ->required();
    app.add_flag("-r,--recursive", request.is_recursive, "Take folders with all folders in them");
    app.add_option("--material,--node", request.materials, "One of them (default: all)")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app.add_option("--exporter", request.exporters, "One of them (default: all)")
        ->type_name("EXPORTER")
        ->allow_extra_args(false);
    app.add_option("--output", request.folder, "The folder for everything, made when missing")
        ->type_name("FOLDER")
        ->required();
    app.add_option("--name", request.name,
                   "The names of files in it, of {material}, {exporter} and {document} (default: " +
                       request.name + ")")
        ->type_name("PATTERN");
}

// What `batch` and `plan` share.
void add_batch_options(CLI::App& app, Batch_command& request)
{
    add_batch_items(app, request);
    add_scene_options(app, request.scene);
    add_answers(app, request.scene, "*");
    add_plugin(app, request.plugin);
}

void take_given_options(const CLI::App& app, Batch_command& request)
{
    request.scene.arguments = given_arguments(app, request.scene.options);
    const std::vector<std::string> words = app.get_option("--overwrite")->results();
    if (!words.empty())
        request.overwrite_word = words.back();
}

void add_plan(CLI::App& app, Plan_command& request, int& status)
{
    CLI::App* command = app.add_subcommand("plan", "Writes a batch as commands for a build system");
    add_batch_options(*command, request.batch);
    add_choice<Plan_format>(
        *command, "--format", request.format, "For which system (default: ninja)",
        {{"ninja", Plan_format::ninja}, {"make", Plan_format::make}, {"json", Plan_format::json}});
    command->add_option("-o,--plan", request.file, "The file (default: standard output)")
        ->type_name("FILE");
    command->callback([&request, command, &status] {
        take_given_options(*command, request.batch);
        status = plan_batch(request);
    });
}

void add_batch(CLI::App& app, Batch_command& request, int& status)
{
    CLI::App* command =
        app.add_subcommand("batch", "Exports all materials of documents through exporters");
    add_batch_options(*command, request);
    command->add_option("--jobs", request.jobs, "How many processes do the work (default: 1)")
        ->check(CLI::Range(1, 256))
        ->type_name("N");
    command->add_flag("--force", request.is_forced, "Export also what did not change");
    add_batch_reports(*command, request);
    command->callback([&request, command, &status] {
        take_given_options(*command, request);
        status = export_batch(request);
    });
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
    add_document(*command, scene);
    add_scene_options(*command, scene);
    add_plugin(*command, plugin);
    command->callback([&] { status = show_window(scene, plugin); });
}

// "help export" prints what "export --help" prints.
void add_help(CLI::App& app)
{
    CLI::App* command = app.add_subcommand("help", "Tells the options of a command");
    CLI::Option* name = command->add_option("COMMAND", "The command (default: all in short)");
    command->callback([&app, name] {
        // The program's own help() would be that of the command at work, this one.
        const std::string help =
            name->empty()
                ? app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal)
                : find_command(app, name->results().front()).help(app.get_name());
        std::fputs(help.c_str(), stdout);
    });
}

// The requests are filled while the command line is parsed, and must outlive that.
void add_commands(CLI::App& app, Requests& requests, int& status)
{
    add_help(app);
    add_list(app, requests.plugin, requests.lists_as_json, status);
    add_nodes(app, requests.nodes, status);
    add_ir(app, requests.ir, status);
    add_export(app, requests.exported, status);
    add_batch(app, requests.batch, status);
    add_plan(app, requests.plan, status);
    add_panel(app, requests.panel, status);
    add_window(app, requests.window, requests.plugin, status);
    add_render_commands(app, export_for_renderer, status);
    add_check_command(app, status);
}

} // namespace

int run_command_line(int argc, char** argv)
{
    CLI::App app("Exports the shaders of MaterialX documents through the plug-in of Tovira",
                 "shader-export");
    app.require_subcommand(1);
    app.set_version_flag("--version", "shader-export " TOVIRAEXPORT_VERSION);
    Requests requests;
    int status = done;
    try {
        add_commands(app, requests, status);
        app.footer(
            "Exit status: 0 done, 1 not done, 2 wrong usage.\n"
            "Example: shader-export export wood.mtlx --exporter \"Custom GLSL\" --output wood");
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error); // help or version
        std::fprintf(stderr, "shader-export: error: %s\nRun with --help for more information.\n",
                     usage_error(app, error).c_str());
        return wrong_usage;
    } catch (const Failure& failure) {
        print_messages(failure.messages());
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
