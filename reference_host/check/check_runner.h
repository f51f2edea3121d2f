// Runs checks, each in a process of its own.
#ifndef REFERENCE_HOST_CHECK_CHECK_RUNNER_H
#define REFERENCE_HOST_CHECK_CHECK_RUNNER_H

#include "reference_host/check/check.h"

#include <functional>
#include <string>
#include <vector>

namespace reference_host
{

struct Check_request {
    std::string plugin;
    std::vector<Check> checks;
    unsigned seed = 1;
    int repeat = 1; // times that each is run, with another seed each time
    int jobs = 1;   // run at once
};

struct Check_result {
    const Check* check = nullptr;
    unsigned seed = 0;
    bool passed = false;
    double seconds = 0;
    std::string findings; // lines
};

// `report` is called with each result, in the order in which they come.
std::vector<Check_result> run_checks(const Check_request& request,
                                     const std::function<void(const Check_result&)>& report);

// The other side: runs one check in this process. Returns its exit status.
int run_one_check(const std::string& plugin, const std::string& id, unsigned seed,
                  const std::string& folder);

} // namespace reference_host

#endif
