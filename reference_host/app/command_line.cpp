#include "reference_host/app/command_line.h"

#include "reference_host/app/command_words.h"
#include "reference_host/app/commands.h"
#include "reference_host/app/configuration.h"
#include "reference_host/app/help_text.h"
#include "reference_host/app/ir_command.h"
#include "reference_host/app/list_command.h"
#include "reference_host/app/man_page.h"
#include "reference_host/app/messages.h"
#include "reference_host/app/option_forms.h"
#include "reference_host/app/render_export.h"
#include "reference_host/app/scene_options.h"
#include "reference_host/app/shell_completion.h"
#include "reference_host/app/usage_error.h"
#include "reference_host/check/check_command.h"
#include "reference_host/generator/generator.h"
#include "reference_host/render/render_command.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>

namespace reference_host
{
namespace
{

constexpr int done = 0;
constexpr int not_done = 1;
constexpr int wrong_usage = 2;

// The requests of all commands.
struct Requests {
    std::string plugin;
    bool lists_as_json = false;
    Nodes_command nodes;
    Ir_command ir;
    Window_command window;
    Export_command exported;
    Batch_command batch;
    Plan_command plan;
    Panel_command panel;
    Shell shell = Shell::bash;
    std::string man_folder;
};

// What the command does, once the whole command line is read. Returns the exit status.
using Action = std::function<int()>;

void set_action(CLI::App& command, Action& action, const Action& does)
{
    command.callback([&action, does] { action = does; });
}

CLI::App& add_command(CLI::App& app, const char* name, const char* help, const char* examples)
{
    return *app.add_subcommand(name, help)->footer(examples);
}

void add_list(CLI::App& app, Requests& requests, Action& action)
{
    CLI::App& command = add_command(app, "list", "List the exporters with their options",
                                    "  shader-export list\n"
                                    "  shader-export list --json | jq '.[].name'");
    add_plugin(command, requests.plugin);
    command.add_flag("--json", requests.lists_as_json,
                     "With what each exporter takes and writes, as JSON");
    set_action(command, action,
               [&] { return list_exporters(requests.plugin, requests.lists_as_json); });
}

void add_nodes(CLI::App& app, Nodes_command& request, Action& action)
{
    CLI::App& command = add_command(app, "nodes", "List the nodes of a document",
                                    "  shader-export nodes wood.mtlx");
    command.add_option("FILE", request.document, "A MaterialX document")->required();
    add_search_path(command, request.search_path);
    command.add_flag("--json", request.as_json, "As JSON");
    set_action(command, action, [&] { return list_nodes(request); });
}

void add_ir(CLI::App& app, Ir_command& request, Action& action)
{
    CLI::App& command =
        add_command(app, "ir", "Print what the compiler makes of a node, in the shading notation",
                    "  shader-export ir wood.mtlx --light key:directional --after prune");
    command.add_option("FILE", request.scene.document, "A MaterialX document")->required();
    command
        .add_option("-n,--node,--material", request.scene.node,
                    "The node (default: the first surface material, else shader)")
        ->type_name("NAME");
    std::string phases;
    for (const std::string& name : phase_names())
        phases += (phases.empty() ? "" : "|") + name;
    command.add_option("--after", request.phase, "After which pass (default: lower)")
        ->type_name(phases);
    command
        .add_option("--target", request.target,
                    "On the way to a text for which target (default: GL)")
        ->check(CLI::IsMember({"FX", "GL", "Swrc"}).description(""))
        ->type_name("FX|GL|Swrc");
    add_surroundings(command, request.scene);
    set_action(command, action, [&] { return print_module(request); });
}

void add_export(CLI::App& app, Export_command& request, Action& action)
{
    CLI::App& command =
        add_command(app, "export", "Export a node through one exporter",
                    "  shader-export export wood.mtlx -e \"Custom GLSL\" -o wood\n"
                    "  shader-export export wood.mtlx -e maya -o effects/ -l key:directional\n"
                    "  shader-export export wood.mtlx -e 5 -o - --set two_sided=on | less");
    add_document(command, request.scene);
    add_scene_options(command, request.scene);
    add_answers(command, request.scene, {});
    add_exporter(command, request.exporter);
    command
        .add_option("-o,--output", request.output,
                    "The export file name; a folder: the node's name in it; -: standard output")
        ->type_name("PATH")
        ->required();
    command.add_flag("--parents", request.makes_folder,
                     "Make the folder of the output when it is missing");
    command.add_option("--depfile", request.depfile, "List what was read, for a build system")
        ->type_name("FILE");
    add_plugin(command, request.plugin);
    set_action(command, action, [&] {
        request.scene.arguments = given_arguments(command, request.scene.options);
        return export_document(request);
    });
}

void add_batch_reports(CLI::App& app, Batch_command& request)
{
    app.add_option("--report", request.report, "Write what happened to each item, as JSON")
        ->type_name("FILE.json");
    app.add_option("--junit", request.junit, "Write the same as JUnit, for build servers")
        ->type_name("FILE.xml");
    app.add_flag("-q,--quiet", request.verbosity.is_quiet, "Report only what went wrong");
    app.add_flag("-v,--verbose", request.verbosity.is_verbose,
                 "Report also each item and its time");
}

// What makes the items of a batch.
void add_batch_items(CLI::App& app, Batch_command& request, const char* output)
{
    app.add_option("INPUT", request.inputs,
                   "MaterialX documents, folders of them; -: a list on standard input")
        ->required();
    app.add_flag("-r,--recursive", request.is_recursive, "Search also the folders in folders");
    app.add_option("-n,--node,--material", request.materials,
                   "Only this material or node (default: all)")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app.add_option("-e,--exporter", request.exporters, "Only this exporter (default: all)")
        ->type_name("EXPORTER")
        ->allow_extra_args(false);
    app.add_option(output, request.folder, "The folder for everything, made when missing")
        ->type_name("FOLDER")
        ->required();
    app.add_option("--name", request.name,
                   "The names of files in it, of {material}, {exporter} and {document} (default: " +
                       request.name + ")")
        ->type_name("PATTERN");
}

// What `batch` and `plan` share.
void add_batch_options(CLI::App& app, Batch_command& request, const char* output)
{
    add_batch_items(app, request, output);
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

void add_plan(CLI::App& app, Plan_command& request, Action& action)
{
    CLI::App& command = add_command(
        app, "plan", "Write a batch as commands for a build system",
        "  shader-export plan materials -r --output effects -o effects.ninja\n"
        "  shader-export plan materials --output effects --format json | jq '.commands | length'");
    add_batch_options(command, request.batch, "--output");
    add_choice<Plan_format>(
        command, "--format", request.format, "For which system (default: ninja)",
        {{"ninja", Plan_format::ninja}, {"make", Plan_format::make}, {"json", Plan_format::json}});
    command.add_option("-o,--plan", request.file, "The file (default: standard output)")
        ->type_name("FILE");
    set_action(command, action, [&] {
        take_given_options(command, request.batch);
        return plan_batch(request);
    });
}

void add_batch(CLI::App& app, Batch_command& request, Action& action)
{
    constexpr int most_jobs = 256;
    CLI::App& command = add_command(
        app, "batch", "Export all materials of documents through exporters",
        "  shader-export batch materials -r -o effects --jobs 2 --report effects.json\n"
        "  find . -name '*.mtlx' | shader-export batch - -o effects --overwrite yes\n"
        "  shader-export batch wood.mtlx -e maya -o effects --name {material}_{exporter}");
    add_batch_options(command, request, "-o,--output");
    command
        .add_option("-j,--jobs", request.jobs,
                    "How many processes do the work, 1 to 256 (default: 1)")
        ->check(CLI::Range(1, most_jobs).description(""))
        ->type_name("N");
    command.add_flag("--force", request.is_forced, "Export also what did not change");
    add_batch_reports(command, request);
    set_action(command, action, [&] {
        take_given_options(command, request);
        return export_batch(request);
    });
}

void add_panel(CLI::App& app, Panel_command& request, Action& action)
{
    constexpr int widest = 4000;
    CLI::App& command =
        add_command(app, "panel", "Describe and draw an exporter's option panel",
                    "  shader-export panel -e \"Custom CgFX\" --screenshot panel.png");
    add_exporter(command, request.exporter);
    command.add_option("--screenshot", request.screenshot, "Write a picture of it")
        ->type_name("FILE.png");
    command
        .add_option("--width", request.width,
                    "The width of the window's area in pixels (default: 400)")
        ->check(CLI::Range(1, widest).description(""))
        ->type_name("N");
    command.add_flag("--json", request.as_json, "Print its height and options as JSON");
    add_plugin(command, request.plugin);
    set_action(command, action, [&] { return show_panel(request); });
}

void add_window(CLI::App& app, Window_command& request, Show_window show_window, Action& action)
{
    CLI::App& command = add_command(app, "window", "Open a window to work in",
                                    "  shader-export window wood.mtlx marble.mtlx");
    command.add_option("FILE", request.documents, "MaterialX documents");
    add_node(command, request.scene);
    add_scene_options(command, request.scene);
    add_plugin(command, request.plugin);
    set_action(command, action, [&, show_window] { return show_window(request); });
}

// "help export" prints what "export --help" prints.
void add_help(CLI::App& app, Action& action)
{
    CLI::App& command =
        add_command(app, "help", "Describe the options of a command", "  shader-export help batch");
    CLI::Option* name = command.add_option("COMMAND", "The command (default: all in short)");
    set_action(command, action, [&app, name] {
        const Program_words words = words_of_program(app);
        const std::string help =
            name->empty() ? help_of_program(words, output_width())
                          : help_of_command(words_of(find_command(app, name->results().front())),
                                            words.program, output_width());
        std::fputs(help.c_str(), stdout);
        return done;
    });
}

void add_completion(CLI::App& app, Shell& shell, Action& action)
{
    CLI::App& command = add_command(app, "completion", "Print a script that completes commands",
                                    "  source <(shader-export completion bash)");
    add_choice<Shell>(command, "SHELL", shell, "For which shell",
                      {{"bash", Shell::bash}, {"zsh", Shell::zsh}, {"fish", Shell::fish}});
    command.get_option("SHELL")->required();
    set_action(command, action, [&app, &shell] {
        std::fputs(completion_script(words_of_program(app), shell).c_str(), stdout);
        return done;
    });
}

void add_man(CLI::App& app, std::string& folder, Action& action)
{
    CLI::App& command = add_command(app, "man", "Print a man page, as installed",
                                    "  shader-export man batch | man -l -");
    CLI::Option* name = command.add_option("COMMAND", "Of a command (default: of the program)");
    command.add_option("--all", folder, "Write all pages into this folder")->type_name("FOLDER");
    set_action(command, action, [&app, name, &folder] {
        const Program_words words = words_of_program(app);
        if (!folder.empty()) {
            write_man_pages(words, folder);
            return done;
        }
        const std::string page =
            name->empty()
                ? man_page_of_program(words)
                : man_page_of_command(words, words_of(find_command(app, name->results().front())));
        std::fputs(page.c_str(), stdout);
        return done;
    });
}

// Which commands there are is known only now.
void finish_commands(CLI::App& app)
{
    std::string names;
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
        command->fallthrough(); // options of all commands may follow the command
        names += (names.empty() ? "" : "|") + command->get_name();
    }
    for (const char* command : {"help", "man"})
        app.get_subcommand(command)->get_option("COMMAND")->type_name(names);
}

// The requests are filled while the command line is parsed, and must outlive that.
void add_commands(CLI::App& app, Requests& requests, Show_window show_window, Action& action)
{
    add_help(app, action);
    add_list(app, requests, action);
    add_nodes(app, requests.nodes, action);
    add_ir(app, requests.ir, action);
    add_export(app, requests.exported, action);
    add_batch(app, requests.batch, action);
    add_plan(app, requests.plan, action);
    add_panel(app, requests.panel, action);
    add_window(app, requests.window, show_window, action);
    add_render_commands(app, export_for_renderer, action);
    add_check_command(app, action);
    add_completion(app, requests.shell, action);
    add_man(app, requests.man_folder, action);
    finish_commands(app);
}

std::string help_of(const CLI::App* app)
{
    if (!app->get_parent())
        return help_of_program(words_of_program(*app), output_width());
    return help_of_command(words_of(*app), words_of(*app->get_parent()), output_width());
}

void declare(CLI::App& app, Requests& requests, Show_window show_window, Action& action)
{
    app.require_subcommand(1);
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("-V,--version", "shader-export " TOVIRAEXPORT_VERSION,
                         "Print the version");
    app.formatter_fn(
        [](const CLI::App* command, std::string, CLI::AppFormatMode) { return help_of(command); });
    app.footer("  shader-export export wood.mtlx --exporter \"Custom GLSL\" --output wood\n"
               "  shader-export batch materials -r --output effects --jobs 2");
    add_commands(app, requests, show_window, action);
    add_configuration(app);
}

// Reads the command line and, where that is wanted, runs its command.
int read_command_line(int argc, const char* const* argv, Show_window show_window, bool acts)
{
    CLI::App app("Export the shaders of MaterialX documents through the plug-in of Tovira",
                 "shader-export");
    Requests requests;
    Action action;
    try {
        declare(app, requests, show_window, action);
        app.parse(argc, argv);
        return acts ? action() : done;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error); // help or version
        print_messages({{Severity::error, usage_error(app, error), {}}});
        std::fputs("Run with --help for more information.\n", stderr);
        return wrong_usage;
    } catch (const Failure& failure) {
        print_messages(failure.messages());
    } catch (const std::invalid_argument& error) {
        print_messages({{Severity::error, error.what(), {}}});
        return wrong_usage;
    } catch (const std::exception& error) {
        print_messages({{Severity::error, error.what(), {}}});
    }
    return not_done;
}

} // namespace

int run_command_line(int argc, const char* const* argv, Show_window show_window)
{
    return read_command_line(argc, argv, show_window, true);
}

int check_command_line(int argc, const char* const* argv)
{
    return read_command_line(argc, argv, nullptr, false);
}

} // namespace reference_host
