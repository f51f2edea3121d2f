// The folder of examples beside the source tree. It is not part of the tree: tests that want it
// skip without it.
#ifndef TESTS_SUPPORT_SHARED_FOLDER_H
#define TESTS_SUPPORT_SHARED_FOLDER_H

#include <string>

namespace QZ
{
namespace TEST
{

// The content of a file in the folder that TOVIRAEXPORT_SHARED names, otherwise in "shared" next to
// the source tree; empty when there is none.
std::string read_shared_file(const std::string& name);

} // namespace TEST
} // namespace QZ

#endif
