#include "reference_host/shading/module_text.h"

#include "reference_host/shading/module_fields.h"
#include "reference_host/shading/notation_printer.h"
#include "reference_host/shading/quotes.h"

namespace reference_host
{
namespace
{

template<class Owner, std::size_t count>
std::string fields_text(const Owner& owner, const Text_field<Owner> (&fields)[count])
{
    std::string text;
    for (const Text_field<Owner>& field : fields)
        if (!(owner.*field.text).empty())
            text += std::string(" ") + field.word + " " + in_quotes(owner.*field.text);
    return text;
}

std::string parameter_text(Module_parameter parameter)
{
    const Notation_printer printer;
    std::string text = "parameter " + printer.type(parameter.value->type) + " " + parameter.name +
                       fields_text(parameter, parameter_fields);
    for (const Number_field& field : number_fields)
        if (const std::optional<double>& number = field.number(parameter))
            text += std::string(" ") + field.word + " " + printer.expression(literal(*number));
    for (const Flag_field& field : flag_fields)
        if (parameter.*field.flag)
            text += std::string(" ") + field.word;
    return text + " = " + printer.expression(parameter.value) + ";\n";
}

std::string texture_text(const Module_texture& texture)
{
    const Base_type sampler = texture.cube ? Base_type::sampler_cube : Base_type::sampler_2d;
    return std::string("texture ") + type_word(sampler) + " " + texture.name +
           fields_text(texture, texture_fields) + ";\n";
}

std::string without_text(const Module& module)
{
    std::string text;
    for (const std::string& input : module.without_counterpart)
        text += (text.empty() ? "without " : ", ") + in_quotes(input);
    return text.empty() ? "" : text + ";\n";
}

} // namespace

std::string module_text(const Module& module)
{
    std::string text = std::string("shader ") + role_words[static_cast<std::size_t>(module.role)] +
                       " " + module.name + ";\n";
    text += "source" + fields_text(module, source_fields) + ";\n" + without_text(module);
    for (const Given_name& given : module.names)
        text += "name " + given.name + " = " + in_quotes(given.wish) + ";\n";
    for (const Module_parameter& parameter : module.parameters)
        text += parameter_text(parameter);
    for (const Module_texture& texture : module.textures)
        text += texture_text(texture);
    for (const Function& function : module.functions)
        text += std::string("\n") + (function.of_library ? "library " : "") +
                Notation_printer().function(function);
    return text;
}

} // namespace reference_host
