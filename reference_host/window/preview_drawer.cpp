#include "reference_host/window/preview_drawer.h"

namespace reference_host
{

Preview_picture Preview_drawer::draw(const Preview_request& request)
{
    Preview_picture picture;
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
        m_loaded = std::make_unique<Loaded_shader>(request.shader->texts, wanted);
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
