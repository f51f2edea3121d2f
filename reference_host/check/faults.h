// Calls of this process that fail on demand: of operator new, and on files. A program has them when
// it links this object, or when libcheck_faults.so, which is made of it, is loaded before all other
// libraries. Nothing fails until a plan is set.
//
// Functions of stdio take part with fopen, fread, fwrite and fclose. They are neither interrupted
// nor cut short, as stdio hides both.
#ifndef REFERENCE_HOST_CHECK_FAULTS_H
#define REFERENCE_HOST_CHECK_FAULTS_H

#include <cstddef>

namespace reference_host
{

enum Fault_kind {
    FAULT_ALLOCATION, // throws std::bad_alloc, or returns null where nothing may be thrown
    FAULT_OPEN,       // open, fopen
    FAULT_READ,       // read, fread
    FAULT_WRITE,      // write, fwrite
    FAULT_CLOSE,      // close, fclose: the file is closed, but an error reported
    FAULT_STAT,       // stat, lstat, fstat
    fault_kinds       // how many there are
};

// Which calls of a kind fail, and how.
struct Fault {
    static constexpr int always = 1 << 30;

    int first;              // counted from 1; 0: none
    int last;               // the last one that fails
    int error;              // errno; 0: the call is only cut short
    std::size_t most_bytes; // of a call that is cut short
};

constexpr Fault fail_at(int number, int error = 0)
{
    return {number, number, error, 1};
}

constexpr Fault fail_first(int count, int error)
{
    return {1, count, error, 1};
}

constexpr Fault cut_short(std::size_t most_bytes)
{
    return {1, Fault::always, 0, most_bytes};
}

struct Fault_plan {
    Fault faults[fault_kinds] = {};
    const char* library = nullptr; // only allocations that it asks for; null: all
    const char* folder = nullptr;  // only files in it; null: all
};

// Sets the plan for the calling thread, and counts anew; null: nothing fails any more. The texts in
// the plan must last as long as it.
extern "C" void shader_export_set_faults(const Fault_plan* plan);

// How many calls of the kind there were since then, failed ones included.
extern "C" int shader_export_fault_calls(Fault_kind kind);

} // namespace reference_host

#endif
