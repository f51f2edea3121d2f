// Opens MaterialX documents (1.38 and 1.39) as shader graphs.
//
// How a document is read:
//   1. document_files reads the file and what it includes into one list of elements.
//   2. graph_scopes makes the nodes: those of the document, those of its node graphs, and those of
//      each use of a custom node that a node graph implements.
//   3. connection_resolver follows every input to what feeds it, through node graphs and interface
//      names.
//   4. graph_checks compares the result with the node library and looks for cycles.
//
// Looks, material assignments, geometry, variants, backdrops and elements of other namespaces are
// passed over. Every other element counts as a node, also when nothing is connected to it.
#ifndef REFERENCE_HOST_DOCUMENT_MATERIALX_READER_H
#define REFERENCE_HOST_DOCUMENT_MATERIALX_READER_H

#include "reference_host/document/shader_graph.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

struct Document_problem {
    Place place;      // line 0: the file as a whole
    std::string text; // one line, the place not included
};

struct Read_result {
    std::unique_ptr<Shader_graph> graph;    // null when the document cannot be used
    std::vector<Document_problem> problems; // then why; there is one at least

    // The first problem's text; empty when there is none.
    std::string error() const { return problems.empty() ? "" : problems.front().text; }
};

// Reads the document and checks it. Included files are looked for beside the file that includes
// them, then in the folders of `search_path`. Goes on after an error, so that all are reported at
// once; errors that only follow from another one are not. Accepts any bytes.
Read_result read_materialx(const std::string& file, const std::vector<std::string>& search_path);

} // namespace reference_host

#endif
