// The sample documents that come with the program.
#ifndef REFERENCE_HOST_WINDOW_SAMPLE_FILES_H
#define REFERENCE_HOST_WINDOW_SAMPLE_FILES_H

#include <string>
#include <vector>

namespace reference_host
{

// Their full paths by name; none where the folder is not there.
std::vector<std::string> sample_files();

} // namespace reference_host

#endif
