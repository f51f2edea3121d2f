// Draws the preview in a thread of its own.
#ifndef REFERENCE_HOST_WINDOW_PREVIEW_DRAWER_H
#define REFERENCE_HOST_WINDOW_PREVIEW_DRAWER_H

#include "reference_host/render/drawing_device.h"
#include "reference_host/render/loaded_shader.h"
#include "reference_host/window/preview_shader.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Preview_request {
    std::shared_ptr<const Preview_shader> shader; // another one is loaded first; null: get ready
    View view;
    std::map<std::string, std::vector<float>> values; // of its parameters
    int size = 0;                                     // of the picture's sides, in pixels
    bool is_fine = false;                             // otherwise it is one of many, soon replaced
};

struct Preview_picture {
    std::shared_ptr<const Preview_shader> shader;
    std::shared_ptr<const Image> image; // null: see error
    bool is_fine = false;
    std::string error;
    std::vector<std::string> notes;
};

// Keeps the shader that it drew last, and the machine code of some before. For one thread.
class Preview_drawer
{
public:
    Preview_picture draw(const Preview_request& request);

private:
    void get_ready();

    std::shared_ptr<Drawing_device> m_device; // null as long as nothing was drawn
    std::shared_ptr<const Preview_shader> m_shader;
    std::unique_ptr<Loaded_shader> m_loaded;
};

} // namespace reference_host

#endif
