// The folder of examples beside the source tree. It is not part of the tree: tests that want it
// skip without it.
#ifndef TESTS_SUPPORT_SHARED_FOLDER_H
#define TESTS_SUPPORT_SHARED_FOLDER_H

#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

// The content of a file in the folder that TOVIRAEXPORT_SHARED names, otherwise in "shared" next to
// the source tree; empty when there is none.
std::string read_shared_file(const std::string& name);

// Where a file of that folder lies.
std::string shared_path(const std::string& name);

// The files of one of its folders with that ending, "FOLDER/NAME", in order.
std::vector<std::string> shared_files(const std::string& folder, const std::string& ending);

} // namespace TEST
} // namespace QZ

#endif
