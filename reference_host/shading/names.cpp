#include "reference_host/shading/names.h"

#include "reference_host/shading/globals.h"
#include "reference_host/shading/shading_state.h"
#include "reference_host/shading/switches.h"

#include <algorithm>
#include <cctype>

namespace reference_host
{
namespace
{

bool is_letter_or_digit(char sign)
{
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
           (sign >= '0' && sign <= '9');
}

bool is_reserved(const std::string& name, const std::string& lower, const Reserved_names& reserved)
{
    // Words that hosts give a meaning to are kept out whatever their case.
    if (reserved.words.count(lower) || (name != lower && reserved.words.count(name)))
        return true;
    return std::any_of(
        reserved.prefixes.begin(), reserved.prefixes.end(),
        [&](const std::string& prefix) { return lower.compare(0, prefix.size(), prefix) == 0; });
}

template<class Enum>
void add_names(std::unordered_set<std::string>& names)
{
    for (int i = 0; i < static_cast<int>(Enum::none); ++i)
        names.insert(name_of(static_cast<Enum>(i)));
}

} // namespace

const Reserved_names& notation_names()
{
    static const Reserved_names reserved = [] {
        Reserved_names made;
        made.words = {"if",  "else",   "for",  "return", "clip",
                      "let", "struct", "true", "false",  "refused"};
        for (int i = 0; i < static_cast<int>(Builtin::none); ++i)
            made.words.insert(row_of(static_cast<Builtin>(i)).name);
        for (int i = 0; i <= static_cast<int>(Base_type::structure); ++i)
            made.words.insert(type_word(static_cast<Base_type>(i)));
        add_names<Switch>(made.taken);
        add_names<Host_value>(made.taken);
        for (const Structure& structure : shading_structures())
            made.taken.insert(structure.name);
        for (const Variable_declaration& variable : scene_variables())
            made.taken.insert(variable.name);
        // What the lowering calls its own variables, and the interfaces.
        made.taken.insert({"state", "surface", "color", "light", "environment_color", "i", "Light",
                           "Volume", "Environment"});
        return made;
    }();
    return reserved;
}

std::string make_identifier(const std::string& name, const Reserved_names& reserved)
{
    std::string made;
    for (const char sign : name)
        if (is_letter_or_digit(sign))
            made += sign;
        else if (!made.empty() && made.back() != '_')
            made += '_';
    made.erase(made.find_last_not_of('_') + 1);
    if (made.empty())
        return "unnamed";
    if (std::isdigit(static_cast<unsigned char>(made[0])))
        made.insert(0, "n");
    std::string lower = made;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char sign) { return static_cast<char>(std::tolower(sign)); });
    return is_reserved(made, lower, reserved) ? "the_" + made : made;
}

std::string Names::take(const std::string& name)
{
    const std::string identifier = make_identifier(name, m_reserved);
    if (m_taken.insert(identifier).second)
        return identifier;
    std::string taken;
    int& number = m_last_number.emplace(identifier, 1).first->second;
    do
        taken = identifier + "_" + std::to_string(++number);
    while (!m_taken.insert(taken).second);
    return taken;
}

} // namespace reference_host
