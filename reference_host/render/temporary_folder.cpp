#include "reference_host/render/temporary_folder.h"

#include <cstdlib>
#include <filesystem>

namespace reference_host
{

Temporary_folder::Temporary_folder()
{
    std::error_code no_folder;
    std::string name = (std::filesystem::temp_directory_path(no_folder) / "render-XXXXXX").string();
    if (!no_folder && mkdtemp(name.data()))
        m_path = name;
}

Temporary_folder::~Temporary_folder()
{
    std::error_code ignored; // a folder that stays behind is no reason to fail
    if (!m_path.empty())
        std::filesystem::remove_all(m_path, ignored);
}

} // namespace reference_host
