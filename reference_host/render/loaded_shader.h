// A shader that is drawn again and again: what takes long is done once.
#ifndef REFERENCE_HOST_RENDER_LOADED_SHADER_H
#define REFERENCE_HOST_RENDER_LOADED_SHADER_H

#include "reference_host/render/render.h"
#include "reference_host/render/shader_source.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

class Drawing_device;
class Prepared_drawing;

// For one thread. While one is drawn, no other one may be, nor may render() run.
class Loaded_shader
{
public:
    // `texts`: as the files of Render_request are. They need not exist as files; their names stand
    // in messages, and textures are looked for beside them. Of the request, all but view, uniforms,
    // size, encoding and files counts.
    Loaded_shader(const std::vector<Shader_source>& texts, const Render_request& request);

    // The same on a device that draws others, too: what they have in common is done once.
    Loaded_shader(const std::vector<Shader_source>& texts, const Render_request& request,
                  const std::shared_ptr<Drawing_device>& device);
    ~Loaded_shader();

    // Draws as the request says, of which view, uniforms and size count. A uniform that has got a
    // value keeps it until it gets another one. Says also what was found when the shader was
    // loaded.
    Render_result draw(const Render_request& request);

private:
    std::string m_name; // of the last text
    Render_result m_loading;
    std::unique_ptr<Prepared_drawing> m_drawing; // null when loading failed
};

// Why a picture of such measures cannot be drawn, in a line; empty when it can.
std::string wrong_measure(const Render_request& request);

} // namespace reference_host

#endif
