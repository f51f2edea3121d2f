// A file that cannot be written, with the system's own reason.
#ifndef REFERENCE_HOST_OUTPUT_WRITE_FAILURE_H
#define REFERENCE_HOST_OUTPUT_WRITE_FAILURE_H

#include <stdexcept>
#include <string>

namespace reference_host
{

// The message is "cannot write 'FILE': REASON".
class Write_failure : public std::runtime_error
{
public:
    Write_failure(const std::string& file, const std::string& reason);
    Write_failure(const std::string& file, int error_number);
};

// Writes a whole file at once, as write_whole_file does. Throws Write_failure.
void write_text(const std::string& file, const std::string& text);

} // namespace reference_host

#endif
