#include "reference_host/app/output_place.h"

#include "reference_host/output/file_names.h"
#include "reference_host/output/write_failure.h"

#include <filesystem>
#include <stdexcept>

namespace reference_host
{

namespace fs = std::filesystem;

std::string export_file_name(const std::string& output, const std::string& node_name)
{
    if (output.empty())
        throw std::invalid_argument("--output is empty");
    if (output.back() == '/')
        make_folder(output);
    std::error_code failure;
    if (!fs::is_directory(output, failure))
        return output;
    return (fs::path(output) / safe_file_name(node_name)).lexically_normal().string();
}

void make_folder(const std::string& folder)
{
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (!failure && !fs::is_directory(folder, failure))
        failure = std::make_error_code(std::errc::not_a_directory);
    if (failure)
        throw Write_failure(folder, failure.value());
}

} // namespace reference_host
