#include "tests/support/shared_folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace QZ
{
namespace TEST
{

namespace
{

std::string shared_folder()
{
    const char* folder = std::getenv("TOVIRAEXPORT_SHARED");
    return folder ? folder : TOVIRAEXPORT_SOURCE_DIR "/../shared";
}

} // namespace

std::string read_shared_file(const std::string& name)
{
    std::ifstream stream(shared_folder() + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string shared_path(const std::string& name)
{
    return shared_folder() + "/" + name;
}

std::vector<std::string> shared_files(const std::string& folder, const std::string& ending)
{
    std::vector<std::string> files;
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::directory_iterator(shared_folder() + "/" + folder, missing))
        if (entry.path().extension() == ending)
            files.push_back(folder + "/" + entry.path().filename().string());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace TEST
} // namespace QZ
