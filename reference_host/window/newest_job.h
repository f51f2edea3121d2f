// Work that a view leaves to a thread of its own. Only the newest request counts: one that waits is
// given up for the next.
#ifndef REFERENCE_HOST_WINDOW_NEWEST_JOB_H
#define REFERENCE_HOST_WINDOW_NEWEST_JOB_H

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include <wx/event.h>

namespace reference_host
{

template<typename Request, typename Result>
class Newest_job
{
public:
    // `work` runs in the thread, `done` on the user-interface thread as an event of `owner`, which
    // must outlive the job.
    Newest_job(wxEvtHandler& owner, std::function<Result(const Request&)> work,
               std::function<void(const Result&)> done)
        : m_owner(owner),
          m_work(std::move(work)),
          m_done(std::move(done)),
          m_thread([this] { run(); })
    {
    }

    // Waits for the work that has begun.
    ~Newest_job()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ends = true;
        }
        m_wake.notify_one();
        m_thread.join();
    }

    Newest_job(const Newest_job&) = delete;
    Newest_job& operator=(const Newest_job&) = delete;

    void start(Request request)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_next = std::move(request);
        }
        m_wake.notify_one();
    }

private:
    void run()
    {
        for (;;) {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_ends || m_next; });
            if (m_ends)
                return;
            const Request request = std::move(*m_next);
            m_next.reset();
            lock.unlock();
            m_owner.CallAfter([done = m_done, result = m_work(request)] { done(result); });
        }
    }

    wxEvtHandler& m_owner;
    std::function<Result(const Request&)> m_work;
    std::function<void(const Result&)> m_done;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<Request> m_next;
    bool m_ends = false;
    std::thread m_thread; // last: it uses all others
};

} // namespace reference_host

#endif
