#include "tests/support/system_faults.h"

#include <cerrno>
#include <cstdarg>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

QZ::TEST::System_faults* faults = nullptr;

bool is_interrupted(int& count)
{
    if (count <= 0)
        return false;
    --count;
    errno = EINTR;
    return true;
}

int open_file(const char* name, int flags, mode_t mode)
{
    if (faults)
        ++faults->opens;
    if (faults && is_interrupted(faults->interrupted_opens))
        return -1;
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, name, flags, mode));
}

} // namespace

// The program's own definitions stand before those of the C library, for the code under test, too.

extern "C" int open(const char* name, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return open_file(name, flags, mode);
}

extern "C" int open64(const char* name, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return open_file(name, flags, mode);
}

extern "C" ssize_t read(int descriptor, void* buffer, size_t size)
{
    if (faults && is_interrupted(faults->interrupted_reads))
        return -1;
    if (faults && faults->read_error != 0) {
        errno = faults->read_error;
        return -1;
    }
    return ::syscall(SYS_read, descriptor, buffer, size);
}

extern "C" ssize_t write(int descriptor, const void* buffer, size_t size)
{
    if (faults) {
        ++faults->writes;
        if (is_interrupted(faults->interrupted_writes))
            return -1;
        if (faults->write_limit != 0 && size > faults->write_limit)
            size = faults->write_limit;
    }
    return ::syscall(SYS_write, descriptor, buffer, size);
}

extern "C" int close(int descriptor)
{
    const int result = static_cast<int>(::syscall(SYS_close, descriptor));
    if (!faults || faults->close_error == 0)
        return result;
    errno = faults->close_error;
    return -1;
}

namespace QZ
{
namespace TEST
{

System_faults::System_faults()
{
    faults = this;
}

System_faults::~System_faults()
{
    faults = nullptr;
}

} // namespace TEST
} // namespace QZ
