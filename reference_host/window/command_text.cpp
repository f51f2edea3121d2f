#include "reference_host/window/command_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstring>

namespace reference_host
{
namespace
{

constexpr const char* texture_path_names[] = {"relative", "absolute", "as-is", "copy"}; // by value

template<typename Number>
std::string decimal_text(Number number)
{
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return std::string(buffer.data(), end.ptr);
}

template<typename Numbers>
std::string numbers_text(const Numbers& numbers)
{
    std::string text;
    for (const auto number : numbers)
        text += (text.empty() ? "" : ",") + decimal_text(number);
    return text;
}

bool is_plain(unsigned char c)
{
    return std::isalnum(c) || std::strchr("_-./:,+@%=", c);
}

void add_option(std::string& text, const char* name, const std::string& value)
{
    text += std::string(" ") + name + " " + shell_word(value);
}

void add_surroundings(std::string& text, const Scene_request& request)
{
    for (const Light_request& light : request.render.lights)
        add_option(text, "--light", light_text(light));
    if (!request.render.environment.empty())
        add_option(text, "--environment", request.render.environment);
    if (!request.render.volume.empty())
        add_option(text, "--volume", request.render.volume);
    if (request.render.ambient != Lighting_request().ambient)
        add_option(text, "--ambient", color_text(request.render.ambient));
    for (const std::string& folder : request.search_path)
        add_option(text, "--search-path", folder);
    if (!request.preferences.exist)
        add_option(text, "--preference", "none");
    for (const auto& preference : request.preferences.values)
        add_option(text, "--preference",
                   preference.first + (preference.second ? "=true" : "=false"));
    if (request.kind.from == Shader_kind_answer::From::fixed)
        add_option(text, "--kind", request.kind.text);
    if (request.kind.from == Shader_kind_answer::From::none)
        add_option(text, "--kind", "none");
    if (request.texture_paths != Scene_request().texture_paths)
        add_option(text, "--texture-paths",
                   texture_path_names[static_cast<int>(request.texture_paths)]);
}

} // namespace

std::string shell_word(const std::string& text)
{
    if (!text.empty() && std::all_of(text.begin(), text.end(), is_plain))
        return text;
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

std::string light_text(const Light_request& light)
{
    std::string text = light.name;
    if (!light.kind)
        return text;
    text += std::string(":") + row_of(*light.kind).word;
    // Only a spot light may name its cone; the short form takes one of any light.
    if (light.spread && *light.kind != Light_kind::spot)
        return text + ":" + decimal_text(*light.spread) +
               (light.distance_limit ? ":" + decimal_text(*light.distance_limit) : "");
    std::string parts;
    for (const auto& input : light.inputs)
        parts += "," + input.first + "=" + numbers_text(input.second);
    if (light.spread)
        parts += ",cone=" + decimal_text(*light.spread);
    if (light.distance_limit)
        parts += ",limit=" + decimal_text(*light.distance_limit);
    return parts.empty() ? text : text + ":" + parts.substr(1);
}

std::string color_text(const std::array<float, 4>& color)
{
    return numbers_text(color);
}

std::string export_command_text(const Scene_request& request, const std::string& exporter,
                                const std::string& output)
{
    std::string text = "shader-export export " + shell_word(request.document);
    if (!request.node.empty())
        add_option(text, "--node", request.node);
    add_option(text, "--exporter", exporter);
    add_option(text, "--output", output);
    add_surroundings(text, request);
    for (const Option_setting& option : request.options)
        add_option(text, "--set", option.name + "=" + option.value);
    return text;
}

std::vector<Option_setting> changed_options(const std::vector<Option_setting>& options,
                                            const std::vector<Option_setting>& untouched)
{
    std::vector<Option_setting> changed;
    for (const Option_setting& option : options) {
        const bool is_untouched =
            std::any_of(untouched.begin(), untouched.end(), [&](const Option_setting& other) {
                return other.name == option.name && other.value == option.value;
            });
        if (!is_untouched)
            changed.push_back(option);
    }
    return changed;
}

} // namespace reference_host
