// A tiny font of dots for labels in pictures.
#ifndef REFERENCE_HOST_RENDER_DOT_TEXT_H
#define REFERENCE_HOST_RENDER_DOT_TEXT_H

#include "reference_host/render/image.h"

#include <string>

namespace reference_host
{

// In dots: the height of a line, and from one character to the next.
constexpr int dot_text_height = 5;
constexpr int dot_text_advance = 4;

// Draws capitals and digits; other characters become a line at the foot of their place. `dot` is
// the side of a dot in pixels. What lies outside the image is left out.
void draw_dot_text(Image& image, const std::string& text, int left, int top, int dot, Pixel ink);

} // namespace reference_host

#endif
