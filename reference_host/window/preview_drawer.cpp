#include "reference_host/window/preview_drawer.h"

namespace reference_host
{
namespace
{

// A program that looks up the sky.
const std::vector<Shader_source> sky_program = {
    {"", "#version 130\nin vec3 vertex_position; out vec3 direction;\n"
         "uniform mat4 world_view_projection;\nvoid main() { direction = vertex_position;\n"
         "gl_Position = world_view_projection * vec4(vertex_position, 1.0); }\n"},
    {"", "#version 130\nuniform samplerCube sky; in vec3 direction; out vec4 color;\n"
         "void main() { color = texture(sky, direction); }\n"}};

} // namespace

// Until the first picture, OpenGL makes and loads much that later ones find.
void Preview_drawer::get_ready()
{
    Render_request request;
    request.size = 1;
    m_device = std::make_shared<Drawing_device>();
    Loaded_shader(sky_program, request, m_device).draw(request);
}

Preview_picture Preview_drawer::draw(const Preview_request& request)
{
    if (!m_device)
        get_ready();
    Preview_picture picture;
    if (!request.shader)
        return picture;
    picture.shader = request.shader;
    picture.is_fine = request.is_fine;
    if (request.shader->texts.empty()) {
        picture.error = request.shader->error;
        return picture;
    }
    Render_request wanted;
    wanted.search_paths = request.shader->search_path;
    wanted.view = request.view;
    wanted.uniforms = request.values;
    wanted.size = request.size;
    if (m_shader != request.shader) {
        m_loaded = nullptr; // one at a time
        m_loaded = std::make_unique<Loaded_shader>(request.shader->texts, wanted, m_device);
        m_shader = request.shader;
    }
    Render_result result = m_loaded->draw(wanted);
    picture.notes = std::move(result.notes);
    picture.error = std::move(result.error);
    if (result.drawn)
        picture.image = std::make_shared<Image>(encode(result.picture, Encoding::srgb));
    return picture;
}

} // namespace reference_host
