// The functions of the table of checks. What each proves stands in its row.
#ifndef REFERENCE_HOST_CHECK_CHECK_FUNCTIONS_H
#define REFERENCE_HOST_CHECK_CHECK_FUNCTIONS_H

namespace reference_host
{

class Check_run;

void check_entries(Check_run& run);
void check_plugin_object(Check_run& run);
void check_exporter_indices(Check_run& run);
void check_exporter_interfaces(Check_run& run);
void check_settings(Check_run& run);
void check_loadings(Check_run& run);
void check_call_pairs(Check_run& run);
void check_random_calls(Check_run& run);

void check_undisturbed_export(Check_run& run);
void check_failing_host_calls(Check_run& run);
void check_failing_allocations(Check_run& run);
void check_failing_system_calls(Check_run& run);
void check_failing_reads(Check_run& run);

void check_panel_life(Check_run& run);
void check_panel_sizes(Check_run& run);
void check_panel_controls(Check_run& run);
void check_destroyed_containers(Check_run& run);
void check_panel_memory(Check_run& run);

void check_chains(Check_run& run);
void check_cycles(Check_run& run);
void check_sharing(Check_run& run);
void check_many_inputs(Check_run& run);

void check_odd_output_files(Check_run& run);
void check_odd_copyright_files(Check_run& run);

} // namespace reference_host

#endif
