#include "reference_host/render/reference_scenes.h"

#include "reference_host/render/render.h"
#include "reference_host/system/file_access.h"
#include "reference_host/system/temporary_folder.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <map>
#include <sstream>

namespace reference_host
{

namespace
{

namespace fs = std::filesystem;

constexpr char light[] = "reference_light:directional:direction=0,0,-1,intensity=1";
constexpr char intensity_of_light[] = "reference_light_intensity";

struct Reference_scene {
    char name;
    float intensity; // of the light
    float radiance;  // from the horizon
    float rise;      // towards the zenith
};

constexpr Reference_scene scenes[] = {
    {'A', 1, 0, 0},
    {'B', 0, 1, 0},
    {'C', 0, 0.5F, 0.5F},
};

struct Reference_picture {
    std::string material;
    char scene;
    std::string file;
};

// The pictures of a document by their names.
std::vector<Reference_picture> pictures_of(const Reference_request& request)
{
    const std::string prefix = fs::path(request.document).stem().string() + ".";
    std::vector<Reference_picture> pictures;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(request.references + "/pictures", error)) {
        const std::string name = entry.path().stem().string();
        if (name.compare(0, prefix.size(), prefix) != 0 || name.size() < prefix.size() + 3)
            continue;
        pictures.push_back({name.substr(prefix.size(), name.size() - prefix.size() - 2),
                            name.back(), entry.path().string()});
    }
    return pictures;
}

std::shared_ptr<const Image> grey_image()
{
    auto image = std::make_shared<Image>(4, 4);
    std::fill(image->pixels.begin(), image->pixels.end(), Pixel{128, 128, 128, 255});
    return image;
}

// What stands in for the image files of a document, by their names without folders.
std::map<std::string, std::shared_ptr<const Image>> stand_ins(const Reference_request& request)
{
    const auto grey = grey_image();
    std::shared_ptr<const Image> color;
    if (auto image = read_image(request.references + "/stand_in.png"))
        color = std::make_shared<Image>(std::move(*image));
    std::map<std::string, std::shared_ptr<const Image>> images;
    constexpr std::uintmax_t max_size = std::uintmax_t{1} << 20;
    std::string ignored;
    std::istringstream table(
        read_whole_file(request.references + "/files.tsv", max_size, ignored).value_or(""));
    for (std::string line; std::getline(table, line);) {
        std::istringstream words(line);
        std::string document;
        std::string file;
        std::string kind;
        if (words >> document >> file >> kind && document == fs::path(request.document).stem())
            images[fs::path(file).filename().string()] = kind == "grey" ? grey : color;
    }
    return images;
}

// The light of one channel over the sphere, of what is drawn and of the reference.
struct Channel {
    std::vector<float> drawn;
    std::vector<float> wanted;

    double difference() const
    {
        double sum = 0;
        for (std::size_t i = 0; i < drawn.size(); ++i)
            sum += std::abs(drawn[i] - wanted[i]);
        return drawn.empty() ? 0.0 : sum / static_cast<double>(drawn.size());
    }
};

Channel channel_of(const Linear_picture& drawn, const Image& reference, std::size_t channel)
{
    Channel values;
    for (std::size_t i = 0; i < reference.pixels.size() && i < drawn.pixels.size(); ++i) {
        if (reference.pixels[i][3] != 255)
            continue;
        const float light = drawn.pixels[i][channel];
        values.drawn.push_back(std::isnan(light) ? 0 : std::clamp(light, 0.0F, 1.0F));
        values.wanted.push_back(
            srgb_decoded(static_cast<float>(reference.pixels[i][channel]) / 255.0F));
    }
    return values;
}

// Pixel by pixel, and of the pixels sorted by brightness: of patterns whose places differ.
std::array<double, 2> differences(const Linear_picture& drawn, const Image& reference)
{
    std::array<double, 2> sums = {};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        Channel values = channel_of(drawn, reference, channel);
        sums[0] += values.difference() / 3;
        std::sort(values.drawn.begin(), values.drawn.end());
        std::sort(values.wanted.begin(), values.wanted.end());
        sums[1] += values.difference() / 3;
    }
    return sums;
}

Render_request render_request(const Reference_scene& scene, const Image& reference)
{
    Render_request render;
    render.size = reference.width;
    render.view.samples = 1;
    render.view.camera.field_of_view = 40;
    render.view.backdrop = Backdrop::environment;
    render.uniforms[intensity_of_light] = {scene.intensity};
    render.environment =
        std::make_shared<Environment>(Environment::gradient(scene.radiance, scene.rise));
    return render;
}

void compare(const Reference_picture& picture, const std::vector<std::string>& files,
             const std::map<std::string, std::shared_ptr<const Image>>& images,
             const Reference_request& request)
{
    const auto reference = read_image(picture.file);
    const auto* const scene =
        std::find_if(std::begin(scenes), std::end(scenes),
                     [&](const Reference_scene& row) { return row.name == picture.scene; });
    if (!reference || scene == std::end(scenes))
        return;
    Render_request wanted = render_request(*scene, *reference);
    wanted.images = images;
    wanted.shader_files = files;
    if (!request.pictures.empty())
        wanted.picture_file = request.pictures + "/" + fs::path(picture.file).filename().string();
    const Render_result result = files.empty() ? Render_result() : render(wanted);
    std::fputs(result.error.c_str(), stderr);
    std::printf("%s\t%s\t%c\t", fs::path(request.document).stem().c_str(), picture.material.c_str(),
                picture.scene);
    if (!result.drawn) {
        std::printf("-\t-\n");
        return;
    }
    const auto [by_pixel, sorted] = differences(result.picture, *reference);
    std::printf("%.4f\t%.4f\n", by_pixel, sorted);
}

} // namespace

bool compare_with_references(const Reference_request& request, const Document_exporter& exporter)
{
    const std::vector<Reference_picture> pictures = pictures_of(request);
    if (pictures.empty())
        return false;
    const Temporary_folder folder;
    Document_request document;
    document.document = request.document;
    document.all = true;
    document.lights = {light};
    std::map<std::string, std::vector<std::string>> files;
    for (const Exported_shader& shader : exporter(document, folder.path()))
        files[shader.name] = shader.files;
    const auto images = stand_ins(request);
    for (const Reference_picture& picture : pictures)
        compare(picture, files[picture.material], images, request);
    return true;
}

} // namespace reference_host
