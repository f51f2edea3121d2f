#include "reference_host/render/render_command.h"

#include "reference_host/render/image.h"
#include "reference_host/render/render.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>

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

int run_render(const Render_request& request)
{
    const Render_result result = render(request);
    for (const std::string& note : result.notes)
        std::fprintf(stderr, "note: %s\n", note.c_str());
    std::fputs(result.error.c_str(), stderr);
    return result.drawn ? 0 : 1;
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
            std::fprintf(stderr, "%s: cannot be read as a picture: %s\n", file.c_str(),
                         reason.c_str());
            return 1;
        }
        images.push_back(std::move(*image));
    }
    const auto difference = mean_difference(images[0], images[1]);
    if (!difference) {
        std::fputs("the pictures differ in size\n", stderr);
        return 1;
    }
    if (!request.allow_flat && is_flat(images[0]) && is_flat(images[1])) {
        std::fputs("the pictures show a flat color only, which proves nothing; are there lights?\n",
                   stderr);
        return 1;
    }
    std::printf("mean difference of 255: red %.3f, green %.3f, blue %.3f\n", (*difference)[0],
                (*difference)[1], (*difference)[2]);
    return *std::max_element(difference->begin(), difference->end()) <= request.limit ? 0 : 1;
}

void add_render(CLI::App& app, int& exit_status)
{
    auto* command = app.add_subcommand("render", "Draw an exported shader on a sphere");
    const auto request = std::make_shared<Render_request>();
    command
        ->add_option("files", request->shader_files,
                     "A GLSL pair, vertex shader first, or one CgFX or HLSL effect")
        ->required()
        ->expected(1, 2);
    command->add_option("-o,--output", request->picture_file, "The PNG file to write")->required();
    command
        ->add_option("--search-path", request->search_paths, "A folder with textures; repeatable")
        ->allow_extra_args(false);
    command->add_option("--size", request->size, "Width and height in pixels")
        ->capture_default_str();
    command->add_option("--shape", request->view.shape, "What is drawn: sphere|plane|cube|ball")
        ->transform(CLI::CheckedTransformer(shapes))
        ->type_name("SHAPE");
    command
        ->add_option("--backdrop", request->view.backdrop,
                     "What is behind it: plain|checker|environment")
        ->transform(CLI::CheckedTransformer(backdrops))
        ->type_name("BACKDROP");
    command
        ->add_option("--environment", request->environment_file,
                     "A latitude-longitude image (PNG, JPEG, HDR) for cube maps and the backdrop")
        ->type_name("FILE");
    command->add_flag_callback(
        "--linear", [request] { request->encoding = Encoding::linear; },
        "Write linear values instead of encoding them for a screen (sRGB)");
    command
        ->add_option("--samples", request->view.samples,
                     "Samples across and down each pixel, 1 to 4; 1: one in the middle")
        ->capture_default_str();
    command
        ->add_option("--field-of-view", request->view.camera.field_of_view,
                     "What the camera sees, in degrees; 40 fills the picture with the sphere")
        ->capture_default_str();
    command
        ->add_option("--background", request->view.background,
                     "The linear colour behind the object: R,G,B")
        ->delimiter(',')
        ->expected(1);
    command->add_option("--cg-compiler", request->cg_compiler, "The program cgc");
    command->callback([request, &exit_status] { exit_status = run_render(*request); });
}

void add_compare(CLI::App& app, int& exit_status)
{
    auto* command = app.add_subcommand("compare", "Tell the mean difference of two pictures");
    const auto request = std::make_shared<Compare_request>();
    command->add_option("pictures", request->pictures, "Two PNG files of the same size")
        ->required()
        ->expected(2);
    command->add_option("--limit", request->limit, "Fail when a channel differs by more, 0 to 255")
        ->capture_default_str();
    command->add_flag("--allow-flat", request->allow_flat,
                      "Compare also two pictures that show a flat color only");
    command->callback([request, &exit_status] { exit_status = run_compare(*request); });
}

} // namespace

void add_render_commands(CLI::App& app, int& exit_status)
{
    add_render(app, exit_status);
    add_compare(app, exit_status);
}

} // namespace reference_host
