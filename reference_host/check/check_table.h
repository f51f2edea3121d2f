// The table of checks: the only list of them.
#ifndef REFERENCE_HOST_CHECK_CHECK_TABLE_H
#define REFERENCE_HOST_CHECK_CHECK_TABLE_H

#include "reference_host/check/check.h"

#include <string>
#include <vector>

namespace reference_host
{

const std::vector<Check>& all_checks();

// Those that are included and not excluded; nothing included means all. A name is an id or its
// beginning up to a point. Throws std::invalid_argument for a name that fits no check.
std::vector<Check> choose_checks(const std::vector<std::string>& included,
                                 const std::vector<std::string>& excluded);

const char* severity_name(Severity severity);

// The page docs/check.md.
std::string checks_as_markdown();

} // namespace reference_host

#endif
