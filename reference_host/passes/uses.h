// What the functions of a module read.
#ifndef REFERENCE_HOST_PASSES_USES_H
#define REFERENCE_HOST_PASSES_USES_H

#include "reference_host/shading/module.h"

#include <map>
#include <set>
#include <string>
#include <unordered_set>

namespace reference_host
{

struct Uses {
    std::unordered_set<std::string> variables;           // also those that are only assigned
    std::map<std::string, std::set<std::string>> fields; // by the name of their structure

    void add(const Statements& statements);
    const std::set<std::string>& fields_of(const std::string& structure) const;
};

Uses collect_uses(const Module& module);

} // namespace reference_host

#endif
