// Compiles every "compile PROFILE ENTRY(" of a Direct3D 9 effect file with the HLSL compiler of
// vkd3d-shader. It looks at the programs only: the names and values of states are cgfxcheck's.
//
//     hlslcheck [-D MACRO]... FILE
//
// Exit status 0: all compile. 1: an error in the file, or no program in it. 2: wrong usage.
// 3: no verdict, because the file uses something that this compiler does not know yet.
#include "reference_host/system/file_access.h"

#include <vkd3d_shader.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace
{

enum class Verdict { good, error, none };

struct Program {
    std::string profile;
    std::string entry;
};

struct Options {
    std::vector<vkd3d_shader_macro> macros;
    const char* file = nullptr;
};

bool is_word_character(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) || character == '_';
}

// The word at `at`, which moves behind it and the spaces after it.
std::string take_word(const std::string& text, std::size_t& at)
{
    const std::size_t begin = at;
    while (at < text.size() && is_word_character(text[at]))
        ++at;
    const std::size_t end = at;
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])))
        ++at;
    return text.substr(begin, end - begin);
}

std::vector<Program> programs_of(const std::string& text)
{
    std::vector<Program> programs;
    for (std::size_t at = 0; at < text.size();) {
        if (!is_word_character(text[at])) {
            ++at;
            continue;
        }
        if (take_word(text, at) != "compile")
            continue;
        Program program;
        program.profile = take_word(text, at);
        program.entry = take_word(text, at);
        if (!program.entry.empty() && at < text.size() && text[at] == '(')
            programs.push_back(program);
    }
    return programs;
}

// How the compiler reports a gap of its own ("not yet implemented").
bool is_own_gap(const char* messages)
{
    return messages && std::strstr(messages, " E5017:");
}

Verdict compile(const std::string& text, const Program& program, const Options& options)
{
    vkd3d_shader_preprocess_info preprocess = {};
    preprocess.type = VKD3D_SHADER_STRUCTURE_TYPE_PREPROCESS_INFO;
    preprocess.macros = options.macros.data();
    preprocess.macro_count = static_cast<unsigned>(options.macros.size());

    vkd3d_shader_hlsl_source_info source = {};
    source.type = VKD3D_SHADER_STRUCTURE_TYPE_HLSL_SOURCE_INFO;
    source.next = &preprocess;
    source.entry_point = program.entry.c_str();
    source.profile = program.profile.c_str();

    const vkd3d_shader_compile_option version = {VKD3D_SHADER_COMPILE_OPTION_API_VERSION,
                                                 VKD3D_SHADER_API_VERSION_1_14};
    vkd3d_shader_compile_info info = {};
    info.type = VKD3D_SHADER_STRUCTURE_TYPE_COMPILE_INFO;
    info.next = &source;
    info.source.code = text.data();
    info.source.size = text.size();
    info.source_type = VKD3D_SHADER_SOURCE_HLSL;
    info.target_type = VKD3D_SHADER_TARGET_D3D_BYTECODE;
    info.options = &version;
    info.option_count = 1;
    info.log_level = VKD3D_SHADER_LOG_INFO;
    info.source_name = options.file;

    vkd3d_shader_code code = {};
    char* messages = nullptr;
    const int result = vkd3d_shader_compile(&info, &code, &messages);
    if (messages)
        std::fputs(messages, stderr);
    const Verdict verdict = result == VKD3D_OK     ? Verdict::good
                            : is_own_gap(messages) ? Verdict::none
                                                   : Verdict::error;
    if (verdict == Verdict::good)
        std::printf("%s %s: %zu bytes\n", program.profile.c_str(), program.entry.c_str(),
                    code.size);
    else
        std::printf("%s %s: %s\n", program.profile.c_str(), program.entry.c_str(),
                    verdict == Verdict::none ? "no verdict" : "failed");
    vkd3d_shader_free_messages(messages);
    vkd3d_shader_free_shader_code(&code);
    return verdict;
}

bool read_options(int count, char** arguments, Options& options)
{
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "-D") == 0) {
            if (++i == count)
                return false;
            options.macros.push_back({arguments[i], "1"});
        } else if (options.file) {
            return false;
        } else {
            options.file = arguments[i];
        }
    }
    return options.file != nullptr;
}

} // namespace

int main(int count, char** arguments)
{
    Options options;
    if (!read_options(count, arguments, options)) {
        std::fputs("usage: hlslcheck [-D MACRO]... FILE\n", stderr);
        return 2;
    }
    constexpr std::size_t max_size = 16 << 20;
    std::string reason;
    const auto text = reference_host::read_whole_file(options.file, max_size, reason);
    if (!text) {
        std::fprintf(stderr, "%s: cannot be read: %s\n", options.file, reason.c_str());
        return 1;
    }
    const std::vector<Program> programs = programs_of(*text);
    if (programs.empty()) {
        std::fprintf(stderr, "%s: no program\n", options.file);
        return 1;
    }
    bool failed = false;
    bool undecided = false;
    for (const Program& program : programs) {
        const Verdict verdict = compile(*text, program, options);
        failed |= verdict == Verdict::error;
        undecided |= verdict == Verdict::none;
    }
    return failed ? 1 : undecided ? 3 : 0;
}
