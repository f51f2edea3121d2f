// Helper functions of generated code, written in the shading notation.
//
// They stand in library/*.shade. "T" in a function is the type of the first argument whose
// parameter is a T; the function is made once for each such type. To add a function, write it into
// one of the files; nothing else names it. Only functions that a shader calls reach its text.
#ifndef REFERENCE_HOST_LIBRARY_LIBRARY_H
#define REFERENCE_HOST_LIBRARY_LIBRARY_H

#include "reference_host/shading/notation.h"

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace reference_host
{

struct Library_function {
    Function_head head;
    Shade_text text;
};

// A function for one meaning of T, with those that it calls in the order of the text. The parts of
// it that a switch leaves out go with the pass "specialise".
struct Library_instance {
    Function function;
    std::vector<const Library_instance*> calls;
};

// The files that the program is built with.
const std::vector<Shade_text>& library_texts();

class Library
{
public:
    // Reads the functions of the files. Throws Shade_error.
    explicit Library(const std::vector<Shade_text>& files);

    // Null when there is none of that name.
    const Library_function* find(const std::string& name) const;

    // A function of this library, parsed when it is asked for first. `generic` is what T stands
    // for; none: there is no T. Throws Notation_error.
    const Library_instance& instance(const Library_function& function,
                                     const Code_type& generic) const;

    // All functions, for tests and for the names that are taken.
    const std::vector<Library_function>& functions() const { return m_functions; }

private:
    std::vector<Library_function> m_functions;
    std::unordered_map<std::string, std::size_t> m_by_name;
    mutable std::map<std::pair<const Library_function*, Base_type>, Library_instance> m_instances;
};

// That of the files that the program is built with.
const Library& standard_library();

} // namespace reference_host

#endif
