// A folder for the files of one test, gone with this object.
#ifndef TESTS_HOST_TEMPORARY_FOLDER_H
#define TESTS_HOST_TEMPORARY_FOLDER_H

#include <string>

class Temporary_folder
{
public:
    Temporary_folder();
    ~Temporary_folder();
    Temporary_folder(const Temporary_folder&) = delete;
    Temporary_folder& operator=(const Temporary_folder&) = delete;

    const std::string& path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }

    // Writes a file, making its folder when the name has one. Returns its path.
    std::string write(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

// The whole content of a file; empty when it cannot be read.
std::string read_file(const std::string& path);

// A document of MaterialX 1.39 around its elements. The elements start in line 2.
std::string document(const std::string& elements);

#endif
