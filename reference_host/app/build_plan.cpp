#include "reference_host/app/build_plan.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>

#include <nlohmann/json.hpp>

namespace reference_host
{
namespace
{

// The text with `mark` before each of the special characters.
std::string escaped(const std::string& text, const char* special, char mark)
{
    std::string result;
    for (const char c : text) {
        if (std::strchr(special, c))
            result += mark;
        result += c;
    }
    return result;
}

std::string double_dollars(const std::string& text)
{
    return escaped(text, "$", '$');
}

std::string shell_word(const std::string& word)
{
    std::string result = "'";
    for (const char c : word)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string shell_line(const std::vector<std::string>& words)
{
    std::string line;
    for (const std::string& word : words)
        line += (line.empty() ? "" : " ") + shell_word(word);
    return line;
}

std::string make_path(const std::string& path)
{
    return double_dollars(escaped(path, " #", '\\'));
}

std::string ninja_path(const std::string& path)
{
    return escaped(path, "$ :", '$');
}

// Whether ninja finds the path in a list of dependencies. Other paths are split there, and what
// depends on a fragment is never up to date. The documents are inputs of the plan itself.
bool is_readable_by_ninja(const std::string& path)
{
    return std::all_of(path.begin(), path.end(), [](unsigned char c) {
        return std::isalnum(c) || c >= 0x80 || std::strchr("+,/_:.~()}{%=@[]!- #$", c);
    });
}

std::string ninja_text(const std::vector<Planned_command>& commands)
{
    std::string text = "rule export\n  command = $line\n  description = $out\n  depfile = $out.d\n";
    for (const Planned_command& command : commands)
        text += "\nbuild " + ninja_path(command.output) + ": export " + ninja_path(command.input) +
                "\n  line = " + double_dollars(shell_line(command.arguments)) + "\n";
    return text;
}

std::string make_text(const std::vector<Planned_command>& commands)
{
    std::string all;
    std::string rules;
    for (const Planned_command& command : commands) {
        const std::string output = make_path(command.output);
        all += " " + output;
        rules += "\n" + output + ": " + make_path(command.input) + "\n\t" +
                 double_dollars(shell_line(command.arguments)) + "\n-include " +
                 make_path(command.dependencies) + "\n";
    }
    return ".PHONY: all\nall:" + all + "\n" + rules;
}

std::string json_text(const std::vector<Planned_command>& commands)
{
    using nlohmann::json;
    json plan = {{"version", 1},
                 {"folder", std::filesystem::current_path().string()},
                 {"commands", json::array()}};
    for (const Planned_command& command : commands)
        plan["commands"].push_back({{"arguments", command.arguments},
                                    {"input", command.input},
                                    {"output", command.output},
                                    {"dependencies", command.dependencies}});
    return plan.dump(1, ' ', false, json::error_handler_t::replace) + '\n';
}

} // namespace

std::string plan_text(const std::vector<Planned_command>& commands, Plan_format format)
{
    switch (format) {
    case Plan_format::ninja:
        return ninja_text(commands);
    case Plan_format::make:
        return make_text(commands);
    case Plan_format::json:
        break;
    }
    return json_text(commands);
}

std::string dependency_text(const std::string& output, const std::vector<std::string>& inputs)
{
    std::string text = make_path(output) + ":";
    for (const std::string& input : inputs) {
        if (is_readable_by_ninja(input))
            text += " \\\n " + make_path(input);
    }
    return text + "\n";
}

} // namespace reference_host
