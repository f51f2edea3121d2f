// Names of the document made names of the text.
#ifndef REFERENCE_HOST_GENERATOR_NAMES_H
#define REFERENCE_HOST_GENERATOR_NAMES_H

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace reference_host
{

// A name as an identifier of every language: letters, digits and single underscores, not beginning
// with a digit, not a reserved word. An empty name is "unnamed".
std::string make_identifier(const std::string& name);

// Gives out identifiers, each once. The names of the library's functions and of the skeleton's own
// variables are taken from the beginning.
class Names
{
public:
    Names();

    // The identifier of a name; when it is taken, with the first free number: "wood_2".
    std::string take(const std::string& name);

    // Takes a name as it stands.
    void reserve(const std::string& name) { m_taken.insert(name); }

private:
    std::unordered_set<std::string> m_taken;
    std::unordered_map<std::string, int> m_last_number;
};

} // namespace reference_host

#endif
