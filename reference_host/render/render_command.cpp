#include "reference_host/render/render_command.h"

#include "reference_host/render/contact_sheet.h"
#include "reference_host/render/image.h"
#include "reference_host/render/reference_scenes.h"
#include "reference_host/render/render.h"
#include "reference_host/system/temporary_folder.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

namespace reference_host
{

namespace
{

// The largest mean difference per channel, 0 to 255, of pictures that count as the same.
constexpr double same_picture_limit = 2.0;

const std::map<std::string, Shape> shapes = {{"sphere", Shape::sphere},
                                             {"plane", Shape::plane},
                                             {"cube", Shape::cube},
                                             {"ball", Shape::ball}};
const std::map<std::string, Backdrop> backdrops = {{"plain", Backdrop::plain},
                                                   {"checker", Backdrop::checker},
                                                   {"environment", Backdrop::environment}};

using Action = std::function<int()>;

// What the command is asked with.
struct Picture_request {
    Render_request render;
    Document_request document;
};

void say(const char* severity, const std::string& text)
{
    std::fprintf(stderr, "shader-export: %s: %s\n", severity, text.c_str());
}

// What a compiler said stands behind the first line as it is.
void say_lines(const std::string& text)
{
    if (!text.empty())
        say("error", text.back() == '\n' ? text.substr(0, text.size() - 1) : text);
}

Render_result render_with_messages(const Render_request& request)
{
    Render_result result = render(request);
    for (const std::string& note : result.notes)
        say("note", note);
    say_lines(result.error);
    return result;
}

bool is_document(const std::string& file)
{
    constexpr char ending[] = ".mtlx";
    constexpr std::size_t length = sizeof ending - 1;
    return file.size() > length && file.compare(file.size() - length, length, ending) == 0;
}

// Draws the exported materials on a sheet; those that fail are left out, and told.
int render_sheet(const Picture_request& request, const std::vector<Exported_shader>& shaders)
{
    std::vector<Named_picture> pictures;
    for (const Exported_shader& shader : shaders) {
        if (shader.files.empty())
            continue;
        Render_request one = request.render;
        one.picture_file.clear();
        one.shader_files = shader.files;
        const Render_result result = render_with_messages(one);
        if (result.drawn)
            pictures.push_back({shader.name, encode(result.picture, one.encoding)});
    }
    if (pictures.empty())
        return 1;
    std::string reason;
    if (!write_png(contact_sheet(pictures), request.render.picture_file, reason)) {
        say("error", "cannot write '" + request.render.picture_file + "': " + reason);
        return 1;
    }
    return pictures.size() == shaders.size() ? 0 : 1;
}

int render_document(const Picture_request& request, const Document_exporter& exporter)
{
    const Temporary_folder folder;
    Document_request document = request.document;
    document.document = request.render.shader_files[0];
    document.environment_file = request.render.environment_file;
    document.search_path = request.render.search_paths;
    const std::vector<Exported_shader> shaders = exporter(document, folder.path());
    if (document.all)
        return render_sheet(request, shaders);
    if (shaders.empty() || shaders[0].files.empty())
        return 1;
    Render_request one = request.render;
    one.shader_files = shaders[0].files;
    return render_with_messages(one).drawn ? 0 : 1;
}

int run_render(const Picture_request& request, const Document_exporter& exporter)
{
    const std::vector<std::string>& files = request.render.shader_files;
    if (files.size() == 1 && is_document(files[0]))
        return render_document(request, exporter);
    const Document_request& document = request.document;
    if (document.all || !document.node.empty() || !document.lights.empty()) {
        throw std::invalid_argument("--all, --node and --light are for documents (.mtlx); exported "
                                    "shaders have their lights");
    }
    return render_with_messages(request.render).drawn ? 0 : 1;
}

struct Compare_request {
    std::vector<std::string> pictures;
    double limit = same_picture_limit;
    bool allow_flat = false;
};

int run_compare(const Compare_request& request)
{
    std::vector<Image> images;
    for (const std::string& file : request.pictures) {
        std::string reason;
        auto image = read_image(file, reason);
        if (!image) {
            say("error", file + ": cannot be read as a picture: " + reason);
            return 1;
        }
        images.push_back(std::move(*image));
    }
    const auto difference = mean_difference(images[0], images[1]);
    if (!difference) {
        say("error", "the pictures differ in size");
        return 1;
    }
    if (!request.allow_flat && is_flat(images[0]) && is_flat(images[1])) {
        say("error",
            "the pictures show a flat color only, which proves nothing; are there lights?");
        return 1;
    }
    std::printf("mean difference of 255: red %.3f, green %.3f, blue %.3f\n", (*difference)[0],
                (*difference)[1], (*difference)[2]);
    return *std::max_element(difference->begin(), difference->end()) <= request.limit ? 0 : 1;
}

// What is drawn.
void add_subject(CLI::App& command, const std::shared_ptr<Picture_request>& picture)
{
    Render_request* const request = &picture->render;
    Document_request* const document = &picture->document;
    command
        .add_option(
            "FILE", request->shader_files,
            "A GLSL pair, vertex shader first, one CgFX or HLSL effect, or a MaterialX document")
        ->required()
        ->expected(1, 2);
    command.add_option("-o,--output", request->picture_file, "The PNG file to write")
        ->type_name("FILE.png")
        ->required();
    command.add_option("-I,--search-path", request->search_paths, "A folder with textures")
        ->type_name("DIR")
        ->allow_extra_args(false);
    command.add_option("--cg-compiler", request->cg_compiler, "The program cgc")->type_name("FILE");
    command.add_flag("--all", document->all, "All materials of the document, on one sheet");
    command
        .add_option("-n,--node", document->node,
                    "The node of the document (default: its first material)")
        ->type_name("NAME");
    command.add_option("--as", document->target, "The language that the document is exported to")
        ->check(CLI::IsMember({"glsl", "cgfx", "hlsl"}).description(""))
        ->type_name("glsl|cgfx|hlsl")
        ->capture_default_str();
    command
        .add_option("-l,--light", document->lights,
                    "A light, as for export (default: the document's, else key and fill)")
        ->type_name("LIGHT")
        ->allow_extra_args(false);
}

// How it is looked at.
void add_view(CLI::App& command, const std::shared_ptr<Picture_request>& picture)
{
    Render_request* const request = &picture->render;
    command.add_option("--size", request->size, "Width and height in pixels")
        ->type_name("N")
        ->capture_default_str();
    command.add_option("--shape", request->view.shape, "What is drawn (default: sphere)")
        ->transform(CLI::CheckedTransformer(shapes).description(""))
        ->type_name("sphere|plane|cube|ball");
    command.add_option("--backdrop", request->view.backdrop, "What is behind it (default: plain)")
        ->transform(CLI::CheckedTransformer(backdrops).description(""))
        ->type_name("plain|checker|environment");
    command
        .add_option("--environment", request->environment_file,
                    "A latitude-longitude image (PNG, JPEG, HDR) for cube maps and the backdrop")
        ->type_name("FILE");
    command.add_flag_callback(
        "--linear", [request] { request->encoding = Encoding::linear; },
        "Write linear values instead of encoding them for a screen (sRGB)");
    command
        .add_option("--samples", request->view.samples,
                    "Samples across and down each pixel, 1 to 4; 1: one in the middle")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--field-of-view", request->view.camera.field_of_view,
                    "What the camera sees, in degrees; 40 fills the picture with the sphere")
        ->type_name("DEGREES")
        ->capture_default_str();
    command
        .add_option("--yaw", request->view.camera.yaw,
                    "How far around the object the camera stands, in degrees to the right")
        ->type_name("DEGREES")
        ->capture_default_str();
    command
        .add_option("--pitch", request->view.camera.pitch,
                    "How far above the object it stands, in degrees")
        ->type_name("DEGREES")
        ->capture_default_str();
    command
        .add_option("--distance", request->view.camera.distance,
                    "How far from the middle of the object it stands, 1.2 to 8")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--background", request->view.background, "The linear colour behind the object")
        ->type_name("R,G,B")
        ->delimiter(',')
        ->expected(1);
}

void add_render(CLI::App& app, const Document_exporter& exporter, Action& action)
{
    CLI::App& command = *app.add_subcommand("render", "Draw an exported shader or a document");
    command.footer("  shader-export render wood_v.gl wood_f.gl -o wood.png\n"
                   "  shader-export render materials.mtlx --all -o sheet.png --shape ball");
    const auto picture = std::make_shared<Picture_request>();
    add_subject(command, picture);
    add_view(command, picture);
    command.callback([picture, exporter, &action] {
        action = [picture, exporter] { return run_render(*picture, exporter); };
    });
}

void add_compare(CLI::App& app, Action& action)
{
    auto* command = app.add_subcommand("compare", "Print the mean difference of two pictures");
    command->footer("  shader-export compare wood.png maya.png --limit 1");
    const auto request = std::make_shared<Compare_request>();
    command->add_option("PICTURE", request->pictures, "Two PNG files of the same size")
        ->required()
        ->expected(2);
    command->add_option("--limit", request->limit, "Fail when a channel differs by more, 0 to 255")
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--allow-flat", request->allow_flat,
                      "Compare also two pictures that show a flat color only");
    command->callback([request, &action] { action = [request] { return run_compare(*request); }; });
}

void add_references(CLI::App& app, const Document_exporter& exporter, Action& action)
{
    auto* command = app.add_subcommand(
        "references", "Compare a document's materials with pictures of how they ought to look");
    const auto request = std::make_shared<Reference_request>();
    command->add_option("document", request->document, "A MaterialX document")->required();
    command->add_option("folder", request->references, "The folder of the pictures")->required();
    command->add_option("--keep", request->pictures, "A folder for what is drawn")
        ->type_name("FOLDER");
    command->callback([request, exporter, &action] {
        action = [request, exporter] {
            return compare_with_references(*request, exporter) ? 0 : 1;
        };
    });
}

} // namespace

void add_render_commands(CLI::App& app, const Document_exporter& exporter,
                         std::function<int()>& action)
{
    add_render(app, exporter, action);
    add_compare(app, action);
    add_references(app, exporter, action);
}

} // namespace reference_host
