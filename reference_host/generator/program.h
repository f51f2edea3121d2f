// The functions and structures that one generated text needs, taken from the library on demand.
//
// A program is also the outermost scope of all texts in the notation: it knows the intrinsics, the
// library's functions and structures, and the constants that were defined for it. Constants steer
// the library: a function that asks "if (has_coat)" has no trace of the coat in programs where
// has_coat is false.
#ifndef REFERENCE_HOST_GENERATOR_PROGRAM_H
#define REFERENCE_HOST_GENERATOR_PROGRAM_H

#include "reference_host/generator/notation.h"

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace reference_host
{

class Library;
struct Library_function;

class Program : public Notation_scope
{
public:
    Program(); // with the standard library
    explicit Program(const Library& library) : m_library(library) {}

    // Makes a name visible in all texts that are parsed from now on.
    void define(const std::string& name, const Expr& meaning) { m_variables[name] = meaning; }

    void add_structure(const Structure& structure);
    void add_method(const std::string& structure, const std::string& name,
                    const Shading_type& result);

    // Adds a function that was made elsewhere.
    void add_function(Function function) { m_functions.push_back(std::move(function)); }

    // Dependencies stand before those who call them.
    const std::deque<Function>& functions() const { return m_functions; }
    const Structure* find_structure(const std::string& name) const;

    Expr find_variable(const std::string& name) override { return known_variable(name); }
    Expr known_variable(const std::string& name) const;
    Shading_type find_type(const std::string& name) override;
    Shading_type find_member(const std::string& structure, const std::string& member) override;
    Expr call(const std::string& function, std::vector<Expr> arguments) override;

    // The library's function for a meaning of T, made if there is none yet.
    const Function& make(const Library_function& function, const Shading_type& generic);

private:
    const Library& m_library;
    std::map<std::string, Expr> m_variables;
    std::map<std::string, Structure> m_structures;
    std::map<std::string, std::map<std::string, Shading_type>> m_methods;
    std::map<std::pair<const Library_function*, Kind>, const Function*> m_instances;
    std::deque<Function> m_functions;
};

} // namespace reference_host

#endif
