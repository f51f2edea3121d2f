// System calls of the test program that fail as a test wants: an interrupted or a short write, a
// close that reports a full quota.
#ifndef TESTS_SUPPORT_SYSTEM_FAULTS_H
#define TESTS_SUPPORT_SYSTEM_FAULTS_H

#include <cstddef>

namespace QZ
{
namespace TEST
{

// What the calls of this process do while one lives. There is one at a time.
class System_faults
{
public:
    System_faults();
    ~System_faults();
    System_faults(const System_faults&) = delete;
    System_faults& operator=(const System_faults&) = delete;

    int interrupted_opens = 0;  // the next opens fail with EINTR
    int interrupted_reads = 0;  // the next reads fail with EINTR
    int interrupted_writes = 0; // the next writes fail with EINTR
    size_t write_limit = 0;     // a write takes no more bytes than these; 0: no limit
    int close_error = 0;        // closing succeeds, but reports this error; 0: none
    int read_error = 0;         // reading fails with this error; 0: none

    // How many there were, failed ones included.
    int opens = 0;
    int writes = 0;
};

} // namespace TEST
} // namespace QZ

#endif
