// Calls of the test program that fail as a test wants: allocations, and those on files.
#ifndef TESTS_SUPPORT_FAULTS_H
#define TESTS_SUPPORT_FAULTS_H

#include "reference_host/check/faults.h"

namespace QZ
{
namespace TEST
{

// What the calls of this thread do while one lives. There is one at a time.
class Faults
{
public:
    Faults() { reference_host::shader_export_set_faults(&m_plan); }
    ~Faults() { reference_host::shader_export_set_faults(nullptr); }
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

    // From now on calls of that kind fail so; no fault: they do not. All calls are counted anew.
    void set(reference_host::Fault_kind kind, const reference_host::Fault& fault = {})
    {
        m_plan.faults[kind] = fault;
        reference_host::shader_export_set_faults(&m_plan);
    }

    // How many there were, failed ones included.
    int calls(reference_host::Fault_kind kind) const
    {
        return reference_host::shader_export_fault_calls(kind);
    }

private:
    reference_host::Fault_plan m_plan;
};

} // namespace TEST
} // namespace QZ

#endif
