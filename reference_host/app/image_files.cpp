#include "reference_host/app/image_files.h"

#include "reference_host/output/file_names.h"

#include <filesystem>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

bool stands_for_several(const std::string& name)
{
    return name.find('<') != std::string::npos;
}

std::string absolute_path(const fs::path& path)
{
    return path.empty() ? std::string() : fs::absolute(path).lexically_normal().string();
}

} // namespace

Image_folders::Image_folders(const std::string& document_folder,
                             std::vector<std::string> search_path)
    : m_folders(std::move(search_path))
{
    m_folders.insert(m_folders.begin(), document_folder);
}

std::string Image_folders::find(const std::string& name) const
{
    std::error_code failure;
    for (const std::string& folder : m_folders) {
        std::string file = absolute_path(fs::path(folder) / name);
        if (fs::is_regular_file(file, failure) || stands_for_several(name))
            return file;
    }
    return {};
}

std::string Image_folders::expect(const std::string& name) const
{
    const std::string found = find(name);
    return found.empty() ? absolute_path(fs::path(m_folders.front()) / name) : found;
}

Image_names::Image_names(Texture_paths choice, const Image_folders& folders,
                         const std::string& output, const std::string& folder)
    : m_choice(choice),
      m_folders(folders),
      m_output(output),
      m_base(folder.empty() ? fs::path(absolute_path(output)).parent_path().string()
                            : absolute_path(folder))
{
}

std::string Image_names::name_of(const std::string& image)
{
    const std::string file = m_folders.find(image);
    if (m_choice == Texture_paths::as_is || image.empty() || file.empty())
        return image;
    if (m_choice == Texture_paths::absolute || m_output.empty())
        return file;
    if (m_choice == Texture_paths::copy && !stands_for_several(image))
        return copy_of(file);
    return fs::path(file).lexically_relative(m_base).generic_string();
}

// The output's name before the image's own keeps the copies of several exports apart.
std::string Image_names::copy_of(const std::string& file)
{
    const fs::path image(file);
    const std::string start =
        safe_file_name(fs::path(m_output).filename().string() + "_" + image.stem().string());
    for (int number = 1;; ++number) {
        const std::string name =
            start + (number == 1 ? "" : "_" + std::to_string(number)) + image.extension().string();
        if (m_copies.emplace(name, file).first->second == file)
            return name;
    }
}

} // namespace reference_host
