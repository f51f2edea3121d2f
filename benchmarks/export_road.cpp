// What the way of 16 MiB of generated code to its file costs, for every exporter on offer:
//
//   export_road/NAME ratio R copies C
//
// R is the time of export_shader over that of taking the same texts with get_code and writing them
// with write(2), the best of several rounds in this run. C is how often the text stood in memory at
// the same time, the host's own included.
#include "exporters/exporter_table.h"
#include "exporters/make_exporter.h"
#include "reference_host/recording_host/recording_host.h"
#include "tests/support/exporter_panel.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wx_test_main.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <new>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace
{

constexpr size_t code_size = size_t{16} << 20;

// Live bytes of allocations that can hold a good part of a text.
std::atomic<size_t> large_bytes{0};
std::atomic<size_t> most_large_bytes{0};

size_t large_size(void* block)
{
    const size_t size = block ? ::malloc_usable_size(block) : 0;
    return size > code_size / 4 ? size : 0;
}

} // namespace

void* operator new(size_t size)
{
    void* block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    large_bytes += large_size(block);
    most_large_bytes = std::max(most_large_bytes.load(), large_bytes.load());
    return block;
}

void operator delete(void* block) noexcept
{
    large_bytes -= large_size(block);
    std::free(block);
}

void operator delete(void* block, size_t) noexcept
{
    operator delete(block);
}

namespace QZ
{
namespace TEST
{
namespace
{

using Clock = std::chrono::steady_clock;

class Export_road : public Wx_test
{
protected:
    Export_road()
    {
        host.set_keeps_log(false);
        host.add_selected_node("node");
        host.codes.assign(2, std::string(code_size, 'x'));
    }

    // Takes and writes `files` texts, as little as there is to do.
    void take_and_write(int files)
    {
        TSDK::IGenerated_shader* shader = host.make_shader();
        for (int i = 0; i < files; ++i) {
            const unsigned int size = shader->get_code_size(i);
            const std::unique_ptr<char[]> buffer(new char[size + 1]);
            shader->get_code(i, buffer.get(), size);
            const int file =
                ::open(folder.file("bare").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ASSERT_EQ(::write(file, buffer.get(), size), static_cast<ssize_t>(size));
            ::close(file);
        }
    }

    template<typename Action>
    static double seconds(Action action)
    {
        const Clock::time_point start = Clock::now();
        action();
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    Temporary_folder folder;
    Recording_host host;
};

TEST_F(Export_road, costs_little_more_than_taking_and_writing_the_bytes)
{
    constexpr int rounds = 15;
    for (size_t row = 0; row < TOVIRAEXPORT::count_offered_exporters(); ++row) {
        const TOVIRAEXPORT::Exporter_facts& facts = TOVIRAEXPORT::exporter_facts[row];
        const std::unique_ptr<TOVIRAEXPORT::Exporter_base> exporter =
            TOVIRAEXPORT::make_exporter(row);
        choose_export_file(*exporter, folder.file("out"));
        const int files = facts.files[1].suffix ? 2 : 1;
        double bare = 1e9;
        double exported = 1e9;
        const size_t of_host = large_bytes;
        for (int round = 0; round < rounds; ++round) {
            bare = std::min(bare, seconds([&] { take_and_write(files); }));
            for (const std::string& file : folder.files())
                ::unlink(folder.file(file).c_str()); // existing ones are asked about
            most_large_bytes = large_bytes.load();
            exported = std::min(exported, seconds([&] {
                                    EXPECT_TRUE(exporter->export_shader(host.app(), host.view()));
                                }));
        }
        const double copies = 1 + static_cast<double>(most_large_bytes - of_host) / code_size;
        std::printf("export_road/%s ratio %.2f copies %.2f\n", facts.name, exported / bare, copies);
    }
}

} // namespace
} // namespace TEST
} // namespace QZ
