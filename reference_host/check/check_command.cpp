#include "reference_host/check/check_command.h"

#include "reference_host/check/check_runner.h"
#include "reference_host/check/check_table.h"
#include "reference_host/system/file_access.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace reference_host
{
namespace
{

struct Check_options {
    std::string plugin;
    std::vector<std::string> included;
    std::vector<std::string> excluded;
    unsigned seed = 1;
    int repeat = 1;
    int jobs = 1;
    bool list = false;
    bool markdown = false;
    bool json = false;
    std::string single; // in the process of one check: its id, and its folder
    std::string folder;
};

std::string json_text(const std::string& text)
{
    std::string result = "\"";
    for (const unsigned char c : text) {
        char escaped[8];
        // Bytes above ASCII need not be UTF-8; code points of the same numbers stand for them.
        if (c < 0x20 || c > 0x7e || c == '"' || c == '\\') {
            std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
            result += escaped;
        } else {
            result += static_cast<char>(c);
        }
    }
    return result + "\"";
}

void print_result(const Check_result& result)
{
    std::printf("%s  %s  %.1f s\n",
                result.passed                                 ? "passed "
                : result.check->severity == Severity::warning ? "warning"
                                                              : "FAILED ",
                result.check->id, result.seconds);
    if (!result.passed)
        std::printf("         %s (--seed %u)\n%s", result.check->sentence, result.seed,
                    result.findings.c_str());
    std::fflush(stdout);
}

void print_json(const std::vector<Check_result>& results)
{
    std::printf("[\n");
    for (const Check_result& result : results)
        std::printf("  {\"id\": %s, \"sentence\": %s, \"severity\": \"%s\", \"seed\": %u, "
                    "\"passed\": %s, \"seconds\": %.3f, \"findings\": %s}%s\n",
                    json_text(result.check->id).c_str(), json_text(result.check->sentence).c_str(),
                    severity_name(result.check->severity), result.seed,
                    result.passed ? "true" : "false", result.seconds,
                    json_text(result.findings).c_str(), &result == &results.back() ? "" : ",");
    std::printf("]\n");
}

int list_checks(const std::vector<Check>& checks)
{
    for (const Check& check : checks)
        std::printf("%-28s %-8s %s\n", check.id, severity_name(check.severity), check.sentence);
    return 0;
}

int check_library(const Check_options& options, const std::vector<Check>& checks)
{
    if (options.plugin.empty())
        throw std::invalid_argument("a library to check is required");
    if (const std::string reason = why_not_readable(options.plugin); !reason.empty())
        throw std::runtime_error("the library '" + options.plugin + "' cannot be read: " + reason);
    const std::string plugin = std::filesystem::absolute(options.plugin).string();
    const Check_request request = {plugin, checks, options.seed, options.repeat, options.jobs};
    const std::vector<Check_result> results = run_checks(request, [&](const Check_result& result) {
        if (!options.json)
            print_result(result);
    });
    if (options.json)
        print_json(results);
    const auto fails = [](const Check_result& result) {
        return !result.passed && result.check->severity == Severity::error;
    };
    return std::any_of(results.begin(), results.end(), fails) ? 1 : 0;
}

int run(const Check_options& options)
{
    if (!options.single.empty())
        return run_one_check(options.plugin, options.single, options.seed, options.folder);
    if (options.markdown) {
        std::fputs(checks_as_markdown().c_str(), stdout);
        return 0;
    }
    const std::vector<Check> checks = choose_checks(options.included, options.excluded);
    return options.list ? list_checks(checks) : check_library(options, checks);
}

} // namespace

void add_check_command(CLI::App& app, std::function<int()>& action)
{
    constexpr int most = 1000;
    auto* command =
        app.add_subcommand("check", "Check a plug-in library, each check in its own process");
    command->footer("  shader-export check build/plugin/toviraexport.so --jobs 2");
    const auto options = std::make_shared<Check_options>();
    command->add_option("LIBRARY", options->plugin, "The plug-in library");
    command->add_flag("--list", options->list, "List the checks and what they prove");
    command->add_flag("--markdown", options->markdown, "Print the page docs/check.md");
    command->add_option("--include", options->included, "Only this check, or group")
        ->type_name("ID")
        ->allow_extra_args(false);
    command->add_option("--exclude", options->excluded, "Not this check, or group")
        ->type_name("ID")
        ->allow_extra_args(false);
    command->add_option("--seed", options->seed, "The seed of random calls")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--repeat", options->repeat, "Run each check N times, with further seeds")
        ->check(CLI::Range(1, most).description(""))
        ->type_name("N")
        ->capture_default_str();
    command->add_option("-j,--jobs", options->jobs, "Run N checks at once")
        ->check(CLI::Range(1, most).description(""))
        ->type_name("N")
        ->capture_default_str();
    command->add_flag("--json", options->json, "Print the results as JSON");
    command->add_option("--run", options->single)->group("");
    command->add_option("--folder", options->folder)->group("");
    command->callback([options, &action] { action = [options] { return run(*options); }; });
}

} // namespace reference_host
