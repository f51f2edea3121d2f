#include "reference_host/check/fault_library.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace reference_host;

namespace
{

Fault_plan plan = {FAULT_NONE, 0, 0, nullptr, nullptr};
int calls = 0;
bool is_counting = false; // keeps the counting itself from being counted

// Whether the function of that address is in the library under test.
bool is_under_test(void* address)
{
    Dl_info info;
    return dladdr(address, &info) != 0 && info.dli_fname &&
           std::strcmp(info.dli_fname, plan.file) == 0;
}

// Whether the library under test asks for memory, itself or through the C++ library's containers.
bool is_asked_by_library()
{
    constexpr int depth = 6;
    void* callers[depth];
    const int count = backtrace(callers, depth);
    for (int i = 2; i < count; ++i) {
        Dl_info info;
        if (dladdr(callers[i], &info) == 0 || !info.dli_fname)
            return false;
        if (!std::strstr(info.dli_fname, "libstdc++"))
            return is_under_test(callers[i]);
    }
    return false;
}

bool is_now()
{
    return ++calls == plan.number;
}

bool allocation_fails()
{
    if (plan.kind != FAULT_ALLOCATION || is_counting)
        return false;
    is_counting = true;
    const bool fails = is_asked_by_library() && is_now();
    is_counting = false;
    return fails;
}

bool is_in_folder(const char* path)
{
    return plan.folder && std::strncmp(path, plan.folder, std::strlen(plan.folder)) == 0;
}

bool is_in_folder(int descriptor)
{
    char link[64];
    char path[PATH_MAX];
    const char prefix[] = "/proc/self/fd/";
    std::memcpy(link, prefix, sizeof prefix);
    char digits[16];
    int length = 0;
    for (int rest = descriptor; length == 0 || rest > 0; rest /= 10)
        digits[length++] = static_cast<char>('0' + rest % 10);
    for (int i = 0; i < length; ++i)
        link[sizeof prefix - 1 + static_cast<size_t>(i)] = digits[length - 1 - i];
    link[sizeof prefix - 1 + static_cast<size_t>(length)] = '\0';
    const ssize_t size = readlink(link, path, sizeof path - 1);
    if (descriptor < 0 || size < 0)
        return false;
    path[size] = '\0';
    return is_in_folder(path);
}

int open_or_fail(const char* path, int flags, mode_t mode)
{
    if (plan.kind == FAULT_OPEN && is_in_folder(path) && is_now()) {
        errno = plan.error;
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t mode_of(int flags, va_list& arguments)
{
    return flags & (O_CREAT | O_TMPFILE) ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" void shader_export_arm_faults(const Fault_plan* new_plan)
{
    void* first[1];
    backtrace(first, 1); // loads what it needs
    plan = *new_plan;
    calls = 0;
}

extern "C" int shader_export_disarm_faults()
{
    plan.kind = FAULT_NONE;
    return calls;
}

void* operator new(std::size_t size)
{
    if (allocation_fails())
        throw std::bad_alloc();
    if (void* memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocation_fails() ? nullptr : std::malloc(size ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocation_fails() ? nullptr : std::malloc(size ? size : 1);
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

extern "C" ssize_t write(int descriptor, const void* buffer, size_t size)
{
    const bool is_meant = plan.kind == FAULT_WRITE || plan.kind == FAULT_SHORT_WRITE;
    if (is_meant && is_in_folder(descriptor) && is_now()) {
        if (plan.kind == FAULT_WRITE) {
            errno = plan.error;
            return -1;
        }
        size = size > 1 ? 1 : size;
    }
    return syscall(SYS_write, descriptor, buffer, size);
}

extern "C" int close(int descriptor)
{
    const bool fails = plan.kind == FAULT_CLOSE && is_in_folder(descriptor) && is_now();
    const int result = static_cast<int>(syscall(SYS_close, descriptor));
    if (!fails)
        return result;
    errno = plan.error;
    return -1;
}
