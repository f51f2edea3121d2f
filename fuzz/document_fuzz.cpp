// Any bytes as a document: read, and exported to every target when it is accepted.
#include "reference_host/document/materialx_reader.h"
#include "reference_host/generator/generator.h"
#include "reference_host/system/memory_file.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace reference_host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t most_nodes = 20; // one of them is enough to find a mistake
    const Memory_file file(std::string(reinterpret_cast<const char*>(data), size));
    const Read_result result = read_materialx(file.path(), {});
    if (!result.graph)
        return 0;
    std::size_t count = 0;
    for (const auto& node : result.graph->nodes) {
        if (++count > most_nodes)
            break;
        Diagnostics diagnostics;
        const auto shader = compile_node(*result.graph, *node, {}, diagnostics);
        for (const char* target : {"FX", "GL", "Swrc"}) {
            if (shader)
                shader->generate(target, {}, diagnostics);
        }
    }
    return 0;
}
