#include "reference_host/output/write_failure.h"

#include "reference_host/system/whole_file.h"

#include <system_error>

namespace reference_host
{

Write_failure::Write_failure(const std::string& file, const std::string& reason)
    : std::runtime_error("cannot write '" + file + "': " + reason)
{
}

Write_failure::Write_failure(const std::string& file, int error_number)
    : Write_failure(file, std::generic_category().message(error_number))
{
}

void write_text(const std::string& file, const std::string& text)
{
    if (const std::string reason = write_whole_file(file, text); !reason.empty())
        throw Write_failure(file, reason);
}

} // namespace reference_host
