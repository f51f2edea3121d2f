#include "reference_host/render/drawing_device.h"

#include <algorithm>

namespace reference_host
{
namespace
{

constexpr std::size_t most_kept = 16; // programs, each with some hundred KB of machine code

std::string texts_of(const Shader_source& vertex, const Shader_source& fragment)
{
    return vertex.text + '\0' + fragment.text;
}

} // namespace

Drawing_device::~Drawing_device()
{
    m_context.make_current();
    m_programs.clear();
    m_skies.clear();
}

std::unique_ptr<Gl_program> Drawing_device::program(const Shader_source& vertex,
                                                    const Shader_source& fragment,
                                                    std::string& error)
{
    std::unique_ptr<Gl_program> program;
    const std::string texts = texts_of(vertex, fragment);
    const auto kept = std::find_if(m_programs.begin(), m_programs.end(),
                                   [&texts](const Kept& one) { return one.texts == texts; });
    if (kept == m_programs.end()) {
        program = Gl_program::link(vertex, fragment, error);
    } else {
        program = std::move(kept->program);
        m_programs.erase(kept);
    }
    if (program)
        program->start_afresh();
    return program;
}

void Drawing_device::keep(std::unique_ptr<Gl_program> program, const Shader_source& vertex,
                          const Shader_source& fragment)
{
    m_programs.push_front({texts_of(vertex, fragment), std::move(program)});
    if (m_programs.size() > most_kept)
        m_programs.pop_back();
}

Shared_texture Drawing_device::sky(Cube_up cube_up)
{
    Shared_texture& sky = m_skies[cube_up];
    if (!sky)
        sky = load_cube_map(*own_sky(), cube_up);
    return sky;
}

} // namespace reference_host
