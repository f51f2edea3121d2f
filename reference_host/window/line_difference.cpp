#include "reference_host/window/line_difference.h"

#include <sstream>

#include <dtl/dtl.hpp>

namespace reference_host
{
namespace
{

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

Line_state state_of(dtl::edit_t edit)
{
    return edit == dtl::SES_ADD      ? Line_state::added
           : edit == dtl::SES_DELETE ? Line_state::removed
                                     : Line_state::same;
}

} // namespace

std::vector<Text_view::Line> line_difference(const std::string& before, const std::string& after)
{
    dtl::Diff<std::string> difference(lines_of(before), lines_of(after));
    difference.compose();
    std::vector<Text_view::Line> lines;
    for (const auto& [text, place] : difference.getSes().getSequence())
        lines.push_back({text, state_of(place.type)});
    return lines;
}

} // namespace reference_host
