// Checks of calls in every order that a host may choose.
#include "reference_host/check/check.h"
#include "reference_host/check/check_functions.h"
#include "reference_host/check/scripted_export.h"

#include <iterator>
#include <string>

namespace reference_host
{
namespace
{

// An exporter, a window and a scene, on which calls follow each other.
struct Stage {
    explicit Stage(std::unique_ptr<QZ::TSDK::IExporter> new_exporter)
        : exporter(std::move(new_exporter)), host(make_scene())
    {
    }

    std::unique_ptr<QZ::TSDK::IExporter> exporter;
    std::unique_ptr<QZ::TEST::Recording_host> host;
    Host_window window;
};

struct Call {
    const char* name;
    bool is_slow; // it makes windows
    void (*make)(Stage& stage, int number);
};

const Call calls[] = {
    {"reference", false, [](Stage& stage, int) { stage.exporter->reference(); }},
    {"release", false, [](Stage& stage, int) { stage.exporter->release(); }},
    {"get_interface", false,
     [](Stage& stage, int number) { stage.exporter->get_interface(number); }},
    {"export_shader", false, [](Stage& stage, int) { export_scene(*stage.exporter, *stage.host); }},
    {"create_ui", true,
     [](Stage& stage, int number) {
         stage.exporter->create_ui(stage.window.handle(), number, stage.host->view());
     }},
    {"create_ui without window", false,
     [](Stage& stage, int number) { stage.exporter->create_ui(0, number, nullptr); }},
    {"remove_ui", false, [](Stage& stage, int) { stage.exporter->remove_ui(nullptr, false); }},
    {"remove_ui, discarding", false,
     [](Stage& stage, int) { stage.exporter->remove_ui(stage.host->view(), true); }},
    {"set_ui_size", false,
     [](Stage& stage, int number) { stage.exporter->set_ui_size(number, 500 - number); }},
    {"destroyed container", true, [](Stage& stage, int) { stage.window.renew_area(); }},
    {"get_setting_name", false,
     [](Stage& stage, int number) {
         stage.exporter->get_setting_name(static_cast<unsigned int>(number));
     }},
    {"get_setting_value", false,
     [](Stage& stage, int number) {
         stage.exporter->get_setting_value(static_cast<unsigned int>(number));
     }},
    {"set_setting_value", false,
     [](Stage& stage, int number) {
         stage.exporter->set_setting_value(static_cast<unsigned int>(number),
                                           number % 2 ? "value" : nullptr);
     }},
    {"get_name", false, [](Stage& stage, int) { stage.exporter->get_name(); }},
};
constexpr int call_count = static_cast<int>(std::size(calls));

// References that stay out because nothing was exported are the exporter's right; all else counts.
void report_damage(Check_run& run, Stage& stage, const std::string& sequence)
{
    for (const std::string& problem : stage.host->problems()) {
        if (problem.compare(0, 14, "never released") != 0)
            run.expect(false, sequence + ": " + problem);
    }
    run.expect(stage.exporter->get_name() != nullptr, sequence + ": the name is lost");
    stage.exporter->remove_ui(nullptr, true);
}

} // namespace

void check_call_pairs(Check_run& run)
{
    const int exporters = run.plugin().get_num_exporters();
    for (int index = 0; index < exporters; ++index) {
        for (const Call& first : calls) {
            for (const Call& second : calls) {
                Stage stage(std::unique_ptr<QZ::TSDK::IExporter>(run.plugin().get_exporter(index)));
                first.make(stage, 300);
                second.make(stage, 1);
                report_damage(run, stage, std::string(first.name) + ", " + second.name);
            }
        }
    }
}

void check_random_calls(Check_run& run)
{
    constexpr int sequences = 10'000;
    constexpr int longest = 8;
    constexpr int slow_share = 10; // of so many slow calls one is made
    const int exporters = run.plugin().get_num_exporters();
    for (int i = 0; i < sequences; ++i) {
        const int index = run.random_number(0, exporters - 1);
        Stage stage(std::unique_ptr<QZ::TSDK::IExporter>(run.plugin().get_exporter(index)));
        std::string sequence = "exporter " + std::to_string(index);
        for (int length = run.random_number(1, longest); length > 0; --length) {
            const Call& call = calls[run.random_number(0, call_count - 1)];
            if (call.is_slow && run.random_number(1, slow_share) > 1)
                continue;
            sequence += std::string(", ") + call.name;
            call.make(stage, run.random_number(-2, 600));
        }
        report_damage(run, stage, sequence);
    }
}

} // namespace reference_host
