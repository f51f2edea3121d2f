// Makes allocations and system calls of the process fail on demand. The library is loaded before
// all others (LD_PRELOAD) by the checks that want it, and does nothing until it is armed.
#ifndef REFERENCE_HOST_CHECK_FAULT_LIBRARY_H
#define REFERENCE_HOST_CHECK_FAULT_LIBRARY_H

namespace reference_host
{

enum Fault_kind {
    FAULT_NONE,
    FAULT_ALLOCATION,  // operator new throws, where the library under test called it
    FAULT_OPEN,        // a file cannot be opened
    FAULT_WRITE,       // a write fails
    FAULT_SHORT_WRITE, // a write takes one byte only
    FAULT_CLOSE        // closing reports an error
};

struct Fault_plan {
    Fault_kind kind;
    int number;         // of the call that fails, counted from 1; 0: none, they are only counted
    int error;          // errno of a failing system call
    const char* file;   // the library under test, for allocations
    const char* folder; // where files are, for system calls
};

// Both are looked up by name. `arm` starts to count anew; `disarm` returns the number of calls of
// that kind since.
using Arm_faults = void (*)(const Fault_plan*);
using Disarm_faults = int (*)();
constexpr const char* arm_faults_name = "shader_export_arm_faults";
constexpr const char* disarm_faults_name = "shader_export_disarm_faults";

} // namespace reference_host

#endif
