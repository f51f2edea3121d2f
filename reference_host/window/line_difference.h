// The difference of two texts, line by line.
#ifndef REFERENCE_HOST_WINDOW_LINE_DIFFERENCE_H
#define REFERENCE_HOST_WINDOW_LINE_DIFFERENCE_H

#include "reference_host/window/text_view.h"

#include <string>
#include <vector>

namespace reference_host
{

// All lines of both texts in order: those of `before` alone are removed, those of `after` alone
// added.
std::vector<Text_view::Line> line_difference(const std::string& before, const std::string& after);

} // namespace reference_host

#endif
