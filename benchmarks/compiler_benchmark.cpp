// What the stand-in's compiler costs, over all documents of the shared folder (without it: of
// samples/), each with two lights and an environment:
//
//   further_target/NAME ratio R    one more text of a compiled material over compiling it and
//                                  making the first text, an effect
//   documents/read ratio R         the share of reading, compiling and generating GLSL that each
//   documents/compile ratio R      step has
//   documents/generate ratio R
//   documents/all seconds S        their sum
//   memory/peak MiB M              of the whole run
//
// Times are the best of several rounds in this run.
#include "reference_host/document/materialx_reader.h"
#include "reference_host/generator/generator.h"
#include "reference_host/host/render_settings.h"
#include "tests/support/shared_folder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include <sys/resource.h>

namespace
{

using namespace reference_host;
using Clock = std::chrono::steady_clock;

constexpr int rounds = 15;

struct Target {
    const char *name, *target, *format;
};

constexpr Target targets[] = {
    {"CgFX", "FX", "CgFX"},
    {"HLSL FX", "FX", "HLSL"},
    {"GLSL", "GL", "CgFX"},
    {"Corvane", "Swrc", "CgFX"},
};

template<class Action>
double seconds(const Action& action)
{
    const Clock::time_point start = Clock::now();
    action();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::vector<std::string> document_files()
{
    std::vector<std::string> files;
    for (const std::string& file : QZ::TEST::shared_files("materialx", ".mtlx"))
        files.push_back(QZ::TEST::shared_path(file));
    if (files.empty())
        for (const auto& entry : std::filesystem::directory_iterator(SAMPLES))
            if (entry.path().extension() == ".mtlx")
                files.push_back(entry.path());
    return files;
}

// A document in its surroundings.
struct Scene {
    std::unique_ptr<Shader_graph> graph;
    std::vector<Option_set> groups; // of its materials
};

Scene read(const std::string& file)
{
    Scene scene{std::move(read_materialx(file, {}).graph), {}};
    if (!scene.graph) // it includes what is not there
        return scene;
    Lighting_request lighting;
    lighting.lights = {{"benchmark_sun", Light_kind::directional, {}, {}, {}},
                       {"benchmark_bulb", Light_kind::point, {}, {}, {}}};
    lighting.environment = "benchmark_sky:sky.png";
    const Render_settings settings = make_render_settings(*scene.graph, lighting);
    for (const auto& node : scene.graph->nodes)
        if (node->category == "surfacematerial")
            scene.groups.push_back(group_options(*node, settings));
    return scene;
}

std::unique_ptr<Compiled_shader> compile(const Scene& scene, const Option_set& group)
{
    Diagnostics diagnostics;
    return compile_group(*scene.graph, group, {}, diagnostics);
}

void generate(const Compiled_shader& compiled, const Target& target)
{
    Diagnostics diagnostics;
    if (compiled.generate(target.target, {{"format", target.format}}, diagnostics).empty())
        std::printf("%s: %s\n", target.name, diagnostics.front().text.c_str());
}

void measure_further_targets(const std::vector<Scene>& scenes)
{
    double first = 0;
    double further[std::size(targets)] = {};
    for (const Scene& scene : scenes)
        for (const Option_set& group : scene.groups) {
            double best_first = 1e9;
            double best[std::size(targets)];
            std::fill(std::begin(best), std::end(best), 1e9);
            for (int round = 0; round < rounds; ++round) {
                std::unique_ptr<Compiled_shader> compiled;
                best_first = std::min(best_first, seconds([&] {
                                          compiled = compile(scene, group);
                                          generate(*compiled, targets[0]);
                                      }));
                for (std::size_t i = 0; i < std::size(targets); ++i)
                    best[i] = std::min(best[i], seconds([&] { generate(*compiled, targets[i]); }));
            }
            first += best_first;
            for (std::size_t i = 0; i < std::size(targets); ++i)
                further[i] += best[i];
        }
    for (std::size_t i = 0; i < std::size(targets); ++i)
        std::printf("further_target/%s ratio %.2f\n", targets[i].name, further[i] / first);
}

void measure_documents(const std::vector<std::string>& files)
{
    double times[3] = {1e9, 1e9, 1e9};
    for (int round = 0; round < rounds; ++round) {
        std::vector<Scene> scenes;
        std::vector<std::unique_ptr<Compiled_shader>> shaders;
        times[0] = std::min(times[0], seconds([&] {
                                for (const std::string& file : files)
                                    scenes.push_back(read(file));
                            }));
        times[1] = std::min(times[1], seconds([&] {
                                for (const Scene& scene : scenes)
                                    for (const Option_set& group : scene.groups)
                                        shaders.push_back(compile(scene, group));
                            }));
        times[2] = std::min(times[2], seconds([&] {
                                for (const auto& shader : shaders)
                                    generate(*shader, targets[2]);
                            }));
    }
    const double all = times[0] + times[1] + times[2];
    std::printf("documents/read ratio %.2f\ndocuments/compile ratio %.2f\n"
                "documents/generate ratio %.2f\ndocuments/all seconds %.4f\n",
                times[0] / all, times[1] / all, times[2] / all, all);
}

} // namespace

int main()
{
    const std::vector<std::string> files = document_files();
    std::vector<Scene> scenes;
    for (const std::string& file : files)
        scenes.push_back(read(file));
    measure_further_targets(scenes);
    measure_documents(files);
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("memory/peak MiB %.1f\n", static_cast<double>(usage.ru_maxrss) / 1024.0);
}
