// Does the work of a batch in processes of their own, so that a crash ends nothing else.
#ifndef REFERENCE_HOST_APP_WORKER_POOL_H
#define REFERENCE_HOST_APP_WORKER_POOL_H

#include "reference_host/app/export_item.h"

#include <functional>
#include <memory>
#include <vector>

namespace reference_host
{

// What one process does, made and used in it.
class Worker
{
public:
    virtual ~Worker() = default;
    virtual Item_result run(size_t number) = 0;

    // Whether no further item is to be started.
    virtual bool wants_end() const = 0;
};

using Make_worker = std::function<std::unique_ptr<Worker>()>;
using Take_result = std::function<void(size_t number, const Item_result& result)>;

// Has the items with these indices exported by `jobs` processes and takes each result, in the order
// in which they come, in this process. The item at which a process crashes has failed, and another
// process goes on. Returns early when a worker asks to stop or the user interrupts.
//
// This process must have no other threads and no connection to a display.
void run_in_processes(const std::vector<size_t>& numbers, int jobs, const Make_worker& make_worker,
                      const Take_result& take_result);

} // namespace reference_host

#endif
