#include "reference_host/output/write_failure.h"

#include <cerrno>
#include <fstream>
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
    errno = 0;
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream)
        throw Write_failure(file, errno);
}

} // namespace reference_host
