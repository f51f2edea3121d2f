#include "reference_host/check/faults.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace reference_host;

namespace
{

thread_local Fault_plan plan;
thread_local bool has_plan = false;
thread_local bool is_counting = false; // keeps the counting itself from being counted
thread_local int calls[fault_kinds] = {};

// Counts a call. Returns its fault, or null when it does not fail.
const Fault* next_fault(Fault_kind kind)
{
    const int number = ++calls[kind];
    const Fault& fault = plan.faults[kind];
    return fault.first > 0 && number >= fault.first && number <= fault.last ? &fault : nullptr;
}

// ---- who asks, and for what ---------------------------------------------------------------------

// The file that the function of that address is in; empty when unknown.
const char* file_of(void* address)
{
    Dl_info info;
    return dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

// Whether the library asks for memory, itself or through the C++ library's containers.
bool is_asked_by_library()
{
    constexpr int depth = 8;
    void* callers[depth];
    const int count = backtrace(callers, depth);
    const char* const own_file = file_of(callers[0]);
    for (int i = 1; i < count; ++i) {
        const char* const file = file_of(callers[i]);
        if (std::strcmp(file, own_file) != 0 && !std::strstr(file, "libstdc++"))
            return std::strcmp(file, plan.library) == 0;
    }
    return false;
}

bool is_meant(const char* path)
{
    return has_plan &&
           (!plan.folder || std::strncmp(path, plan.folder, std::strlen(plan.folder)) == 0);
}

// Allocates nothing: the call may come from anywhere.
bool is_meant(int descriptor)
{
    if (!has_plan || !plan.folder)
        return has_plan;
    char link[32];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t size = readlink(link, path, sizeof path - 1);
    if (size < 0)
        return false;
    path[size] = '\0';
    return is_meant(path);
}

// ---- failing ------------------------------------------------------------------------------------

// Whether the call fails; errno then says why. A call on `file` that can be cut short gets its size
// in `size`.
template<typename File>
bool fails(Fault_kind kind, File file, std::size_t* size = nullptr)
{
    const Fault* const fault = is_meant(file) ? next_fault(kind) : nullptr;
    if (fault && fault->error == 0 && size)
        *size = std::min(*size, fault->most_bytes);
    if (!fault || fault->error == 0)
        return false;
    errno = fault->error;
    return true;
}

// The same for stdio.
template<typename File>
bool stream_fails(Fault_kind kind, File file)
{
    return fails(kind, file) && errno != EINTR;
}

// The function of that name that this file stands before.
template<typename Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// The descriptor of a stream that may be none.
int number_of(std::FILE* stream)
{
    return has_plan ? fileno(stream) : -1;
}

bool allocation_fails()
{
    if (!has_plan || is_counting)
        return false;
    is_counting = true;
    const bool fails =
        (!plan.library || is_asked_by_library()) && next_fault(FAULT_ALLOCATION) != nullptr;
    is_counting = false;
    return fails;
}

void* allocate_or_null(std::size_t size)
{
    return allocation_fails() ? nullptr : std::malloc(size ? size : 1);
}

void* allocate(std::size_t size)
{
    if (void* memory = allocate_or_null(size))
        return memory;
    throw std::bad_alloc();
}

int open_or_fail(const char* path, int flags, mode_t mode)
{
    return fails(FAULT_OPEN, path)
               ? -1
               : static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

std::FILE* open_stream(const char* name, const char* path, const char* mode)
{
    return stream_fails(FAULT_OPEN, path)
               ? nullptr
               : real<std::FILE*(const char*, const char*)>(name)(path, mode);
}

mode_t mode_of(int flags, va_list& arguments)
{
    return flags & (O_CREAT | O_TMPFILE) ? va_arg(arguments, mode_t) : 0;
}

} // namespace

namespace reference_host
{

extern "C" void shader_export_set_faults(const Fault_plan* new_plan)
{
    void* first[1];
    backtrace(first, 1); // loads what it needs
    has_plan = new_plan != nullptr;
    plan = new_plan ? *new_plan : Fault_plan();
    std::fill(std::begin(calls), std::end(calls), 0);
}

extern "C" int shader_export_fault_calls(Fault_kind kind)
{
    return calls[kind];
}

} // namespace reference_host

// ---- memory: what one form of new allocates, one form of delete releases ------------------------

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate_or_null(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate_or_null(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

// ---- files --------------------------------------------------------------------------------------

extern "C" int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_or_fail(path, flags, mode);
}

extern "C" int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_or_fail(path, flags | O_LARGEFILE, mode);
}

extern "C" ssize_t read(int descriptor, void* buffer, std::size_t size)
{
    return fails(FAULT_READ, descriptor, &size) ? -1 : syscall(SYS_read, descriptor, buffer, size);
}

extern "C" ssize_t write(int descriptor, const void* buffer, std::size_t size)
{
    return fails(FAULT_WRITE, descriptor, &size) ? -1
                                                 : syscall(SYS_write, descriptor, buffer, size);
}

extern "C" int close(int descriptor)
{
    const bool failing = fails(FAULT_CLOSE, descriptor);
    const int error = errno;
    const int result = static_cast<int>(syscall(SYS_close, descriptor));
    if (!failing)
        return result;
    errno = error;
    return -1;
}

extern "C" std::FILE* fopen(const char* path, const char* mode)
{
    return open_stream("fopen", path, mode);
}

extern "C" std::FILE* fopen64(const char* path, const char* mode)
{
    return open_stream("fopen64", path, mode);
}

extern "C" std::size_t fread(void* buffer, std::size_t size, std::size_t count, std::FILE* stream)
{
    if (!stream_fails(FAULT_READ, number_of(stream)))
        return real<decltype(fread)>("fread")(buffer, size, count, stream);
    stream->_flags |= _IO_ERR_SEEN;
    return 0;
}

extern "C" std::size_t fwrite(const void* buffer, std::size_t size, std::size_t count,
                              std::FILE* stream)
{
    if (!stream_fails(FAULT_WRITE, number_of(stream)))
        return real<decltype(fwrite)>("fwrite")(buffer, size, count, stream);
    stream->_flags |= _IO_ERR_SEEN;
    return 0;
}

extern "C" int fclose(std::FILE* stream)
{
    const bool failing = stream_fails(FAULT_CLOSE, number_of(stream));
    const int error = errno;
    const int result = real<decltype(fclose)>("fclose")(stream);
    if (!failing)
        return result;
    errno = error;
    return EOF;
}

extern "C" int stat(const char* path, struct stat* status)
{
    return fails(FAULT_STAT, path) ? -1 : real<decltype(stat)>("stat")(path, status);
}

extern "C" int stat64(const char* path, struct stat64* status)
{
    return fails(FAULT_STAT, path) ? -1 : real<decltype(stat64)>("stat64")(path, status);
}

extern "C" int lstat(const char* path, struct stat* status)
{
    return fails(FAULT_STAT, path) ? -1 : real<decltype(lstat)>("lstat")(path, status);
}

extern "C" int lstat64(const char* path, struct stat64* status)
{
    return fails(FAULT_STAT, path) ? -1 : real<decltype(lstat64)>("lstat64")(path, status);
}

extern "C" int fstat(int descriptor, struct stat* status)
{
    return fails(FAULT_STAT, descriptor) ? -1 : real<decltype(fstat)>("fstat")(descriptor, status);
}

extern "C" int fstat64(int descriptor, struct stat64* status)
{
    return fails(FAULT_STAT, descriptor) ? -1
                                         : real<decltype(fstat64)>("fstat64")(descriptor, status);
}
