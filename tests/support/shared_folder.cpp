#include "tests/support/shared_folder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace QZ
{
namespace TEST
{

std::string read_shared_file(const std::string& name)
{
    const char* folder = std::getenv("TOVIRAEXPORT_SHARED");
    const std::string path = folder ? folder : TOVIRAEXPORT_SOURCE_DIR "/../shared";
    std::ifstream stream(path + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

} // namespace TEST
} // namespace QZ
