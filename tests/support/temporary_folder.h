// An empty folder that goes away with everything in it.
#ifndef TESTS_SUPPORT_TEMPORARY_FOLDER_H
#define TESTS_SUPPORT_TEMPORARY_FOLDER_H

#include <string>
#include <vector>

namespace QZ
{
namespace TEST
{

class Temporary_folder
{
public:
    Temporary_folder();
    ~Temporary_folder();
    Temporary_folder(const Temporary_folder&) = delete;
    Temporary_folder& operator=(const Temporary_folder&) = delete;

    const std::string& path() const { return m_path; }

    // The path of a file in the folder.
    std::string file(const std::string& name) const { return m_path + "/" + name; }

    // Creates or replaces a file, and makes its folder when the name has one. Returns its path.
    std::string write(const std::string& name, const std::string& content) const;

    // The content of a file; "<no file>" when there is none.
    std::string read(const std::string& name) const;

    // The names of the files, sorted.
    std::vector<std::string> files() const;

private:
    std::string m_path;
};

} // namespace TEST
} // namespace QZ

#endif
