// The parameters that an effect offers to an artist, as its annotations describe them.
#ifndef REFERENCE_HOST_RENDER_EFFECT_PARAMETERS_H
#define REFERENCE_HOST_RENDER_EFFECT_PARAMETERS_H

#include <optional>
#include <string>
#include <vector>

namespace reference_host
{

enum class Parameter_widget { numbers, slider, color, check_box };

struct Effect_parameter {
    std::string name;
    std::string label;
    std::string folder; // empty: in none
    Parameter_widget widget = Parameter_widget::numbers;
    bool is_whole = false; // holds whole numbers alone
    std::optional<float> min, max, step;
    std::vector<float> value; // one to four numbers
};

// Those of numbers that have a label, in the order of the text. Hidden ones, arrays, matrices and
// textures are left out.
std::vector<Effect_parameter> effect_parameters(const std::string& text);

} // namespace reference_host

#endif
