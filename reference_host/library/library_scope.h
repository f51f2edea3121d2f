// The outermost scope of all texts in the notation: builtins, the library's functions, structures,
// switches and what the host provides.
#ifndef REFERENCE_HOST_LIBRARY_LIBRARY_SCOPE_H
#define REFERENCE_HOST_LIBRARY_LIBRARY_SCOPE_H

#include "reference_host/library/library.h"

#include <string>
#include <vector>

namespace reference_host
{

class Library_scope : public Notation_scope
{
public:
    // The library must outlive the scope. `generic` is what T stands for; none: nothing.
    explicit Library_scope(const Library& library = standard_library(), Code_type generic = {})
        : m_library(library), m_generic(std::move(generic))
    {
    }

    Expr find_variable(const std::string& name) override;
    Code_type find_type(const std::string& name) override;
    Code_type find_member(const std::string& structure, const std::string& member) override;
    Expr call(const std::string& function, std::vector<Expr> arguments) override;

    // The functions that the calls made so far need, each once, in the order of the first calls.
    const std::vector<const Library_instance*>& used() const { return m_used; }

private:
    const Library& m_library;
    Code_type m_generic;
    std::vector<const Library_instance*> m_used;
};

// Adds a function to others and, before it, what it calls, unless they are there.
void add_with_callees(const Library_instance& instance, std::vector<Function>& functions);

} // namespace reference_host

#endif
