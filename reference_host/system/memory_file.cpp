#include "reference_host/system/memory_file.h"

#include "reference_host/system/file_access.h"

#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace reference_host
{

Memory_file::Memory_file(const std::string& content)
    : m_descriptor(memfd_create("shader-export", MFD_CLOEXEC)),
      m_path("/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(m_descriptor))
{
    if (m_descriptor >= 0 && write_all(m_descriptor, content))
        return;
    close(m_descriptor);
    throw std::runtime_error("no memory for a temporary file");
}

Memory_file::~Memory_file()
{
    close(m_descriptor);
}

std::string Memory_file::content(std::size_t max_size) const
{
    std::string text(max_size, '\0');
    std::size_t size = 0;
    while (size < max_size) {
        const ssize_t count =
            pread(m_descriptor, &text[size], max_size - size, static_cast<off_t>(size));
        if (count == 0 || (count < 0 && errno != EINTR))
            break;
        size += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(size);
    return text;
}

} // namespace reference_host
