// A batch as commands that do not depend on each other, for a build system or a farm.
#ifndef REFERENCE_HOST_APP_BUILD_PLAN_H
#define REFERENCE_HOST_APP_BUILD_PLAN_H

#include "reference_host/app/commands.h"

#include <string>
#include <vector>

namespace reference_host
{

// One command. What it makes is the record of the export, since which files an exporter writes is
// known only afterwards; `dependencies` is the file in which it lists what it read, as compilers
// do.
struct Planned_command {
    std::vector<std::string> arguments; // the program first
    std::string input;
    std::string output;
    std::string dependencies;
};

// The whole text of the plan.
std::string plan_text(const std::vector<Planned_command>& commands, Plan_format format);

// The text of a file that lists what `output` depends on, without names that ninja cannot read.
std::string dependency_text(const std::string& output, const std::vector<std::string>& inputs);

} // namespace reference_host

#endif
