#include "reference_host/targets/annotations.h"

#include "reference_host/targets/dialect.h"
#include "reference_host/targets/float_text.h"

#include <pugixml.hpp>

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace reference_host
{
namespace
{

const std::map<std::string, std::string> plain_names = {
    {"UIName", "UIName"}, {"UIWidget", "UIWidget"}, {"UIMin", "UIMin"},
    {"UIMax", "UIMax"},   {"UIStep", "UIStep"},     {"UIFolder", "UIFolder"}};

// Standard annotations and semantics 1.1, which has no folders; SasUiSteps would be a count.
const std::map<std::string, std::string> sas_names = {{"UIName", "SasUiLabel"},
                                                      {"UIWidget", "SasUiControl"},
                                                      {"UIMin", "SasUiMin"},
                                                      {"UIMax", "SasUiMax"},
                                                      {"UIStep", "SasUiStride"}};

bool slides(const Module_parameter& parameter)
{
    return parameter.value->type == Base_type::float1 ||
           parameter.value->type == Base_type::integer;
}

const char* widget_of(const Module_parameter& parameter, bool sas)
{
    if (parameter.kind.compare(0, 5, "color") == 0)
        return sas ? "ColorPicker" : "Color";
    if (slides(parameter))
        return "Slider";
    if (parameter.value->type == Base_type::boolean)
        return sas ? "Any" : "CheckBox";
    return "Numeric";
}

// What the document says; else for whole numbers one, for others a hundredth of their range rounded
// down to a power of ten. None where the range has no end or no width.
std::optional<double> step_of(const Module_parameter& parameter)
{
    const Range& range = parameter.range;
    if (parameter.step || !range.min || !range.max || *range.max <= *range.min)
        return parameter.step;
    if (parameter.value->type == Base_type::integer)
        return 1.0;
    constexpr double rounding = 1e-9; // of the logarithm
    const double digits = std::log10((*range.max - *range.min) / 100.0);
    return std::pow(10.0, std::floor(digits + rounding));
}

std::string block(const std::vector<std::string>& lines)
{
    if (lines.empty())
        return "";
    std::string text = "\n<\n";
    for (const std::string& line : lines)
        text += "    " + line + ";\n";
    return text + ">";
}

// How programs call lights of their scenes and what these have: the words of 3ds Max, Maya and FX
// Composer, which fill parameters so marked from a light that the artist chooses.
struct Light_word {
    const char *word, *object;
};

constexpr Light_word light_words[] = {
    {"directional_light", "DirectionalLight"},
    {"point_light", "PointLight"},
    {"spot_light", "SpotLight"},
};

struct Aspect_word {
    const char *word, *semantic;
};

constexpr Aspect_word aspect_words[] = {
    {"position", "POSITION"},
    {"direction", "DIRECTION"},
    {"color", "DIFFUSE"},
};

template<class Row, std::size_t count>
const Row& row_of(const std::string& word, const Row (&rows)[count])
{
    return *std::find_if(std::begin(rows), std::end(rows) - 1,
                         [&](const Row& row) { return word == row.word; });
}

// What exporters name when nobody chose a map. They need not be there.
constexpr const char* usual_maps[] = {"default.axml", "catia.axml"};

bool is_usual(const std::string& file)
{
    return std::find(std::begin(usual_maps), std::end(usual_maps), file) != std::end(usual_maps);
}

bool is_regular_file(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

std::string quoted(const std::string& text)
{
    std::string made = "\"";
    for (const char sign : text) {
        if (sign == '"' || sign == '\\')
            made += '\\';
        made += static_cast<unsigned char>(sign) < ' ' ? ' ' : sign;
    }
    return made + "\"";
}

Annotations::Annotations(const Text_options& options, const std::string& folder,
                         Diagnostics& diagnostics)
    : m_sas(options.hlsl_sas_conformance),
      m_names(m_sas ? sas_names : plain_names),
      m_resource_name(options.texture_resource_annotation),
      m_keeps_unmapped(options.generate_umapped_annotations)
{
    const std::string& file = options.annotation_map;
    if (is_regular_file(file))
        read_map(file, diagnostics);
    else if (!file.empty() && file[0] != '/' && is_regular_file(folder + "/" + file))
        read_map(folder + "/" + file, diagnostics);
    else if (!file.empty() && !is_usual(file))
        diagnostics.push_back(
            {Severity::warning, "the annotation map \"" + file + "\" is missing", {}});
}

void Annotations::read_map(const std::string& file, Diagnostics& diagnostics)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_file(file.c_str());
    const pugi::xml_node root = document.child("annotations");
    if (!result || !root) {
        diagnostics.push_back({Severity::warning, "\"" + file + "\" is not an annotation map", {}});
        return;
    }
    m_names.clear();
    for (const pugi::xml_node row : root.children("annotation")) {
        const std::string target = row.attribute("target").value();
        if (target == make_identifier(target, reserved_names()))
            m_names[row.attribute("name").value()] = target;
        else
            diagnostics.push_back(
                {Severity::warning,
                 quoted(file) + ": " + quoted(target) + " is not the name of an annotation",
                 {}});
    }
}

void Annotations::add_line(std::vector<std::string>& lines, const std::string& type,
                           const std::string& name, const std::string& value) const
{
    const auto mapped = m_names.find(name);
    if (mapped != m_names.end() || m_keeps_unmapped)
        lines.push_back(type + " " + (mapped != m_names.end() ? mapped->second : name) + " = " +
                        value);
}

void Annotations::add(std::vector<std::string>& lines, const std::string& name,
                      const std::string& value) const
{
    if (!value.empty())
        add_line(lines, "string", name, quoted(value));
}

void Annotations::add(std::vector<std::string>& lines, const std::string& name, double value) const
{
    add_line(lines, "float", name, float_text(value));
}

void Annotations::add_light(std::vector<std::string>& lines, const Module_parameter& parameter)
{
    lines.push_back("string Object = " + quoted(row_of(parameter.light, light_words).object));
    if (parameter.aspect != "color")
        lines.emplace_back("string Space = \"World\"");
}

std::string Annotations::of(const Module_parameter& parameter) const
{
    std::vector<std::string> lines;
    if (!parameter.light.empty())
        add_light(lines, parameter);
    add(lines, "UIName", parameter.label);
    add(lines, "UIWidget", widget_of(parameter, m_sas));
    const bool is_slider = slides(parameter);
    const Range& range = parameter.range;
    if (is_slider && range.min)
        add(lines, "UIMin", *range.min);
    if (is_slider && range.max)
        add(lines, "UIMax", *range.max);
    const std::optional<double> step = step_of(parameter);
    if (is_slider && step)
        add(lines, "UIStep", *step);
    add(lines, "UIFolder", parameter.folder);
    add(lines, "UIHelp", parameter.description);
    const std::string semantic =
        parameter.light.empty()
            ? ""
            : std::string(" : ") + row_of(parameter.aspect, aspect_words).semantic;
    return semantic + block(lines);
}

std::string Annotations::of(const Module_texture& texture, const std::string& path) const
{
    std::vector<std::string> lines = {"string " + m_resource_name + " = " + quoted(path),
                                      "string ResourceType = \"" +
                                          std::string(texture.cube ? "Cube" : "2D") + "\""};
    add(lines, "UIName", texture.label);
    add(lines, "UIFolder", texture.folder);
    return block(lines);
}

} // namespace reference_host
