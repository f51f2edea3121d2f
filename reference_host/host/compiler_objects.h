// The shader compiler as the plug-in sees it: the generator behind the SDK's interfaces.
#ifndef REFERENCE_HOST_HOST_COMPILER_OBJECTS_H
#define REFERENCE_HOST_HOST_COMPILER_OBJECTS_H

#include "reference_host/host/graph_objects.h"
#include "sdk/itovira_compiler.h"

#include <string>
#include <vector>

namespace reference_host
{

// What the compiler did during an export, for the host's own eyes.
struct Compiler_record {
    Diagnostics diagnostics;             // of all compilations and generations, in order
    std::vector<std::string> texts;      // the generated texts that the plug-in copied out
    std::vector<std::string> wrong_uses; // arguments that the host cannot accept
};

class Compiler : public Host_object<QZ::TSDK::ITovira_compiler>
{
public:
    // Both must outlive the compiler and all that comes from it.
    Compiler(Graph_objects& objects, Compiler_record& record);

    int get_interface_target() const override;
    QZ::TSDK::ICompiler_options* create_options() override;
    QZ::TSDK::ICompiler_errors* get_errors() override;
    QZ::TSDK::ICompilation_unit* compile_shader(QZ::TSDK::IGraph_node* node,
                                                QZ::TSDK::ICompiler_errors* errors,
                                                int flags) override;
    QZ::TSDK::ICompilation_unit* compile(QZ::TSDK::Interface* graph,
                                         QZ::TSDK::ICompiler_errors* errors,
                                         QZ::TSDK::ICompiler_options* options) override;

private:
    QZ::TSDK::ICompilation_unit* hand_out_unit(std::unique_ptr<Compiled_shader> shader,
                                               const std::string& name);

    Graph_objects& m_objects;
    Compiler_record& m_record;
};

} // namespace reference_host

#endif
