// Documents, generations and comparisons of texts for the generator's tests.
#ifndef TESTS_GENERATOR_GENERATION_H
#define TESTS_GENERATOR_GENERATION_H

#include "reference_host/document/shader_graph.h"
#include "reference_host/generator/generator.h"

#include <memory>
#include <string>
#include <vector>

namespace generation
{

using reference_host::Diagnostics;
using reference_host::Option_set;
using reference_host::Shader_graph;

// The graph of a document whose elements are given without the enclosing one. Fails the test when
// the document is not accepted.
std::unique_ptr<Shader_graph> graph_of(const std::string& elements);

struct Test_document {
    std::string name;
    std::unique_ptr<Shader_graph> graph;
};

// All documents of samples/ and of the shared folder that can be read, in each also the lights
// "added_sun" and "added_bulb", the environment "added_sky" and the fog "added_fog".
std::vector<Test_document> all_documents();

// The options of compiling one of their materials with all that was added.
Option_set lit_by_all(const std::string& material);

// The materials and shaders of a document that can be exported.
std::vector<std::string> exported_nodes(const Shader_graph& graph);

// A material "paint" with a textured, coated surface "paint_surface", lights "sun", "bulb" and
// "spot", an environment "sky" and a fog "haze".
std::string painted_scene();

struct Result {
    std::vector<std::string> texts; // empty on failure
    Diagnostics diagnostics;

    std::string text() const { return texts.empty() ? "" : texts[0]; }
    std::string messages() const; // all diagnostics, one to a line
};

// Compiles the group of options["shader_name"] (default "paint") and generates for a target.
Result generate(const Shader_graph& graph, const std::string& target, const Option_set& group,
                const Option_set& options);

// Compiles one node by itself.
Result generate_node(const Shader_graph& graph, const std::string& node, const std::string& target,
                     const Option_set& options);

// The lines that the second text has and the first has not, and the other way round: "+line" and
// "-line" in their order.
std::vector<std::string> difference(const std::string& before, const std::string& after);

bool contains(const std::string& text, const std::string& part);

} // namespace generation

#endif
