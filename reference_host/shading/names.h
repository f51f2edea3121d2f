// Names of the document made identifiers.
#ifndef REFERENCE_HOST_SHADING_NAMES_H
#define REFERENCE_HOST_SHADING_NAMES_H

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace reference_host
{

// What cannot be the name of anything else in a text.
struct Reserved_names {
    std::unordered_set<std::string> words; // with a meaning, whatever their case
    std::unordered_set<std::string> taken; // names of something else
    std::vector<std::string> prefixes;     // of names of something else
};

// The words of the notation and what the passes and the lowering call their own.
const Reserved_names& notation_names();

// A name as an identifier: letters, digits and single underscores, not beginning with a digit, not
// a reserved word. An empty name is "unnamed".
std::string make_identifier(const std::string& name, const Reserved_names& reserved);

// Gives out identifiers, each once.
class Names
{
public:
    // Must outlive the names.
    explicit Names(const Reserved_names& reserved) : m_reserved(reserved), m_taken(reserved.taken)
    {
    }

    // The identifier of a name; when it is taken, with the first free number: "wood_2".
    std::string take(const std::string& name);

    // Takes a name as it stands.
    void reserve(const std::string& name) { m_taken.insert(name); }

private:
    const Reserved_names& m_reserved;
    std::unordered_set<std::string> m_taken;
    std::unordered_map<std::string, int> m_last_number;
};

} // namespace reference_host

#endif
