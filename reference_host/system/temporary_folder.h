// A place for files that must not outlive the program.
#ifndef REFERENCE_HOST_SYSTEM_TEMPORARY_FOLDER_H
#define REFERENCE_HOST_SYSTEM_TEMPORARY_FOLDER_H

#include <string>

#include <sys/types.h>

namespace reference_host
{

// A new folder that only its owner can read, removed with what is in it at the end of its life.
// A small process makes it, stands by and removes it: so the folder goes even when this process is
// killed.
class Temporary_folder
{
public:
    // Throws std::runtime_error when none can be made.
    Temporary_folder();
    ~Temporary_folder();
    Temporary_folder(const Temporary_folder&) = delete;
    Temporary_folder& operator=(const Temporary_folder&) = delete;

    // Without slash at the end.
    const std::string& path() const { return m_path; }

private:
    void end_keeper();

    std::string m_path;
    int m_link = -1; // to the keeper; closes with this process and its copies
    pid_t m_keeper = -1;
};

} // namespace reference_host

#endif
