// An allocation of the test program that fails.
#ifndef TESTS_SUPPORT_ALLOCATION_FAULT_H
#define TESTS_SUPPORT_ALLOCATION_FAULT_H

namespace QZ
{
namespace TEST
{

// While one lives, the Nth use of operator new in this thread (from 1 on) throws std::bad_alloc.
// There is one at a time.
class Allocation_fault
{
public:
    explicit Allocation_fault(int nth);
    ~Allocation_fault();
    Allocation_fault(const Allocation_fault&) = delete;
    Allocation_fault& operator=(const Allocation_fault&) = delete;

    // Whether it came to the Nth.
    bool happened() const;
};

} // namespace TEST
} // namespace QZ

#endif
