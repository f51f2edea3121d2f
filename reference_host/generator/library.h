// Helper functions of generated code, written in the notation of notation.h.
//
// They stand in library/*.shade. "T" in a function is the type of the first argument whose
// parameter is a T; the function is made once for each such type. To add a function, write it into
// one of the files; nothing else names it. Only functions that a shader calls reach its text.
#ifndef REFERENCE_HOST_GENERATOR_LIBRARY_H
#define REFERENCE_HOST_GENERATOR_LIBRARY_H

#include "reference_host/generator/notation.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace reference_host
{

struct Library_function {
    Function_head head;
    Shade_text text;
};

class Library
{
public:
    // Reads the functions of the files. Throws Shade_error.
    explicit Library(const std::vector<Shade_text>& files);

    // Null when there is none of that name.
    const Library_function* find(const std::string& name) const;

    // All functions, for tests and for the names that are taken.
    const std::vector<Library_function>& functions() const { return m_functions; }

private:
    std::vector<Library_function> m_functions;
    std::unordered_map<std::string, std::size_t> m_by_name;
};

// That of the files that the program is built with.
const Library& standard_library();

} // namespace reference_host

#endif
