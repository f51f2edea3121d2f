#include "reference_host/render/cg_listing.h"

#include <locale>
#include <sstream>

namespace reference_host
{

namespace
{

constexpr char variable_mark[] = "//var ";
constexpr char default_mark[] = "//default ";

bool starts_with(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(trimmed(part));
    return parts;
}

void read_variable(const std::string& line, Cg_listing& listing)
{
    const std::vector<std::string> parts = split(line, ':');
    const std::size_t space = parts.empty() ? std::string::npos : parts[0].find(' ');
    if (parts.size() < 3 || space == std::string::npos)
        return;
    Cg_variable variable;
    variable.type = parts[0].substr(0, space);
    variable.name = trimmed(parts[0].substr(space));
    variable.semantic = parts[1];
    const std::size_t comma = parts[2].find(',');
    variable.uniform = parts[2].substr(0, comma);
    if (comma != std::string::npos) {
        variable.uniform.resize(variable.uniform.rfind("[0]") == std::string::npos
                                    ? variable.uniform.size()
                                    : variable.uniform.rfind("[0]"));
        variable.count = std::atoi(parts[2].c_str() + comma + 1);
    }
    listing.variables.push_back(std::move(variable));
}

void read_default(const std::string& line, Cg_listing& listing)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos)
        return;
    std::istringstream numbers(line.substr(equals + 1));
    numbers.imbue(std::locale::classic());
    std::vector<float> values;
    for (float value = 0; numbers >> value;)
        values.push_back(value);
    listing.defaults[trimmed(line.substr(0, equals))].push_back(std::move(values));
}

// The default under exactly this name, or for "list[2].member" the third one of "member".
std::vector<float> named_default(const Cg_listing& listing, const std::string& name)
{
    if (const auto found = listing.defaults.find(name); found != listing.defaults.end())
        return found->second.front();
    const std::size_t close = name.rfind("].");
    const std::size_t open = name.rfind('[', close);
    if (close == std::string::npos || open == std::string::npos)
        return {};
    const auto members = listing.defaults.find(name.substr(close + 2));
    const auto element = static_cast<std::size_t>(std::atoi(name.c_str() + open + 1));
    if (members == listing.defaults.end() || element >= members->second.size())
        return {};
    return members->second[element];
}

} // namespace

Cg_listing read_cg_listing(const std::string& text)
{
    Cg_listing listing;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (starts_with(line, variable_mark))
            read_variable(line.substr(sizeof variable_mark - 1), listing);
        else if (starts_with(line, default_mark))
            read_default(line.substr(sizeof default_mark - 1), listing);
    }
    return listing;
}

std::vector<float> default_of(const Cg_listing& listing, const Cg_variable& variable)
{
    if (variable.count == 1)
        return named_default(listing, variable.name);
    std::vector<float> values;
    for (int i = 0; i < variable.count; ++i) {
        const auto row = named_default(listing, variable.name + "[" + std::to_string(i) + "]");
        values.insert(values.end(), row.begin(), row.end());
    }
    return values;
}

} // namespace reference_host
