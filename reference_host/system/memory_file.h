// Files that exist in memory only.
#ifndef REFERENCE_HOST_SYSTEM_MEMORY_FILE_H
#define REFERENCE_HOST_SYSTEM_MEMORY_FILE_H

#include <cstddef>
#include <string>

namespace reference_host
{

// A file for other programs of this user, which is on no disk: nothing is left behind, however the
// program ends. It has a path as long as this object lives.
class Memory_file
{
public:
    // Throws std::runtime_error when there is no memory for it.
    explicit Memory_file(const std::string& content = {});
    ~Memory_file();
    Memory_file(const Memory_file&) = delete;
    Memory_file& operator=(const Memory_file&) = delete;

    const std::string& path() const { return m_path; }

    // What is in it now, at most `max_size` bytes.
    std::string content(std::size_t max_size) const;

private:
    int m_descriptor;
    std::string m_path;
};

} // namespace reference_host

#endif
