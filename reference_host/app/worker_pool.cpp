#include "reference_host/app/worker_pool.h"

#include "reference_host/app/interruption.h"
#include "reference_host/app/item_json.h"
#include "reference_host/system/file_access.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <stdexcept>

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace reference_host
{
namespace
{

using nlohmann::json;

// The place of the next item in the list, shared by all processes.
class Shared_counter
{
public:
    Shared_counter()
        : m_memory(mmap(nullptr, sizeof(std::atomic<size_t>), PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (m_memory == MAP_FAILED)
            throw std::runtime_error(std::string("no memory for processes: ") +
                                     std::strerror(errno));
        m_counter = new (m_memory) std::atomic<size_t>(0);
    }
    ~Shared_counter() { munmap(m_memory, sizeof(std::atomic<size_t>)); }
    Shared_counter(const Shared_counter&) = delete;
    Shared_counter& operator=(const Shared_counter&) = delete;

    size_t take() { return m_counter->fetch_add(1); }
    size_t next() const { return m_counter->load(); }
    void end(size_t count) { m_counter->store(count); }

private:
    void* m_memory;
    std::atomic<size_t>* m_counter;
};

void write_line(int pipe, const std::string& text)
{
    if (!write_all(pipe, text + '\n'))
        _exit(1); // nobody listens any more
}

// What a process does from its start to its end. Says which item it begins, then what came of it.
void work(const std::vector<size_t>& numbers, Shared_counter& counter, int pipe,
          const Make_worker& make_worker)
{
    const std::unique_ptr<Worker> worker = make_worker();
    while (Interruption::signal() == 0) {
        const size_t at = counter.take();
        if (at >= numbers.size())
            return;
        write_line(pipe, json{{"number", numbers[at]}}.dump());
        const Item_result result = worker->run(numbers[at]);
        std::fflush(nullptr);
        write_line(pipe, dump_line(result));
        if (worker->wants_end())
            counter.end(numbers.size());
    }
}

struct Process {
    pid_t id = -1;
    int pipe = -1;
    std::string buffer;
    std::optional<size_t> current; // the item that it works on
};

class Pool
{
public:
    Pool(const std::vector<size_t>& numbers, int jobs, const Make_worker& make_worker,
         const Take_result& take_result)
        : m_numbers(numbers), m_jobs(jobs), m_make_worker(make_worker), m_take_result(take_result)
    {
    }

    void run()
    {
        const size_t count = std::min(m_numbers.size(), static_cast<size_t>(m_jobs));
        for (size_t i = 0; i < count; ++i)
            start();
        while (!m_processes.empty()) {
            if (Interruption::signal() != 0)
                pass_on_interruption();
            listen();
        }
    }

private:
    void start()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error(std::string("no pipe: ") + std::strerror(errno));
        std::fflush(nullptr);
        const pid_t parent = getpid();
        const pid_t id = fork();
        if (id < 0)
            throw std::runtime_error(std::string("no process: ") + std::strerror(errno));
        if (id == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            Interruption::remember_all();
            if (getppid() != parent)
                _exit(1);
            run_child(ends[1]);
        }
        close(ends[1]);
        m_processes.push_back({id, ends[0], {}, {}});
    }

    [[noreturn]] void run_child(int pipe)
    {
        if (m_jobs > 1) { // several cannot ask one user
            const int silence = open("/dev/null", O_RDONLY);
            dup2(silence, STDIN_FILENO);
        }
        try {
            work(m_numbers, m_counter, pipe, m_make_worker);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "shader-export: error: %s\n", error.what());
            std::fflush(nullptr);
            _exit(1);
        }
        std::fflush(nullptr);
        _exit(0); // what is open belongs to the parent, too
    }

    void pass_on_interruption()
    {
        if (!m_has_passed_on) {
            for (const Process& process : m_processes)
                kill(process.id, SIGTERM);
        }
        m_has_passed_on = true;
    }

    void listen()
    {
        std::vector<pollfd> waiting;
        for (const Process& process : m_processes)
            waiting.push_back({process.pipe, POLLIN, 0});
        if (poll(waiting.data(), waiting.size(), -1) < 0)
            return; // interrupted
        for (size_t i = waiting.size(); i-- > 0;) {
            if (waiting[i].revents != 0)
                read_from(i);
        }
    }

    void read_from(size_t index)
    {
        Process& process = m_processes[index];
        char buffer[65536];
        const ssize_t count = read(process.pipe, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            return;
        if (count <= 0)
            return end(index);
        process.buffer.append(buffer, static_cast<size_t>(count));
        for (size_t stop = process.buffer.find('\n'); stop != std::string::npos;
             stop = process.buffer.find('\n')) {
            take(process, json::parse(process.buffer.substr(0, stop)));
            process.buffer.erase(0, stop + 1);
        }
    }

    void take(Process& process, const json& line)
    {
        if (line.contains("number")) {
            process.current = line.at("number").get<size_t>();
            return;
        }
        m_take_result(process.current.value(), line.get<Item_result>());
        process.current.reset();
    }

    void end(size_t index)
    {
        const Process process = m_processes[index];
        m_processes.erase(m_processes.begin() + static_cast<std::ptrdiff_t>(index));
        close(process.pipe);
        int status = 0;
        while (waitpid(process.id, &status, 0) < 0 && errno == EINTR)
            continue;
        if (process.current) {
            const std::string reason =
                WIFSIGNALED(status) ? strsignal(WTERMSIG(status)) : "the process ended by itself";
            m_take_result(*process.current, failed_item("the export crashed: " + reason));
        } else if (WIFEXITED(status) && WEXITSTATUS(status) != 0) {
            return; // it could not even begin, and the next one could not either
        }
        if (m_counter.next() < m_numbers.size() && Interruption::signal() == 0)
            start();
    }

    const std::vector<size_t>& m_numbers;
    int m_jobs;
    const Make_worker& m_make_worker;
    const Take_result& m_take_result;
    Shared_counter m_counter;
    std::vector<Process> m_processes;
    bool m_has_passed_on = false;
};

} // namespace

void run_in_processes(const std::vector<size_t>& numbers, int jobs, const Make_worker& make_worker,
                      const Take_result& take_result)
{
    Pool(numbers, jobs, make_worker, take_result).run();
}

} // namespace reference_host
