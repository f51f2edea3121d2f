// A place for the files that the renderer exchanges with other programs.
#ifndef REFERENCE_HOST_RENDER_TEMPORARY_FOLDER_H
#define REFERENCE_HOST_RENDER_TEMPORARY_FOLDER_H

#include <string>

namespace reference_host
{

// A new folder, removed with what is in it at the end of its life.
class Temporary_folder
{
public:
    Temporary_folder();
    ~Temporary_folder();
    Temporary_folder(const Temporary_folder&) = delete;
    Temporary_folder& operator=(const Temporary_folder&) = delete;

    // Without slash at the end; empty when none could be made.
    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace reference_host

#endif
