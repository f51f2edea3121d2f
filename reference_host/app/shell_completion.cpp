#include "reference_host/app/shell_completion.h"

#include <algorithm>

namespace reference_host
{
namespace
{

std::string joined(const std::vector<std::string>& words, const char* between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

// The text with `mark` before each of the special characters.
std::string marked(const std::string& text, const char* special, const std::string& mark)
{
    std::string result;
    for (const char c : text) {
        if (std::string(special).find(c) != std::string::npos)
            result += mark;
        result += c;
    }
    return result;
}

std::string single_quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

// The options of a command and those that all commands share.
std::vector<Option_words> all_options(const Program_words& words, const Command_words& command)
{
    std::vector<Option_words> options = command.options;
    options.insert(options.end(), words.program.options.begin(), words.program.options.end());
    return options;
}

// The names of the options, and the words of arguments that choose between some.
std::vector<std::string> words_for_bash(const std::vector<Option_words>& options)
{
    std::vector<std::string> names;
    for (const Option_words& option : options) {
        const std::vector<std::string> more = option.is_argument ? option.choices() : option.names;
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

// The names of the exporters, a line each, as the plug-in that is installed has them.
const char* const exporter_names = "shader-export list 2>/dev/null | sed -n 's/^[0-9][0-9]*  //p'";

bool is_exporter(const Option_words& option)
{
    return option.value == "EXPORTER";
}

// How the value of an option is completed. Names of exporters have spaces, and are quoted.
std::string bash_value(const Option_words& option)
{
    if (option.is_path())
        return "compopt -o default";
    if (is_exporter(option))
        return "local IFS=$'\\n'\n        COMPREPLY=($(compgen -W \"$(" +
               std::string(exporter_names) +
               ")\" -- \"$current\"))\n        COMPREPLY=(\"${COMPREPLY[@]@Q}\")";
    return "COMPREPLY=($(compgen -W \"" + joined(option.choices(), " ") + "\" -- \"$current\"))";
}

std::string bash_values(const std::string& command, const std::vector<Option_words>& options)
{
    std::string text;
    for (const Option_words& option : options) {
        if (option.is_argument || option.value.empty())
            continue;
        std::vector<std::string> patterns;
        for (const std::string& name : option.names)
            patterns.push_back("\"" + command + " " + name + "\"");
        text += "    " + joined(patterns, " | ") + ")\n        " + bash_value(option) +
                "\n        return\n        ;;\n";
    }
    return text;
}

std::string bash_script(const Program_words& words)
{
    std::vector<std::string> commands;
    std::string values = bash_values("", words.program.options);
    std::string names;
    for (const Command_words& command : words.commands) {
        const std::vector<Option_words> options = all_options(words, command);
        commands.push_back(command.name);
        values += bash_values(command.name, options);
        names +=
            "    " + command.name + ") words=\"" + joined(words_for_bash(options), " ") + "\" ;;\n";
    }
    const std::string all = joined(commands, " ");
    return "# bash completion for shader-export\n_shader_export()\n{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    local command= word words\n"
           "    if [[ $current == = ]]; then\n        current=\n"
           "    elif [[ $previous == = ]]; then\n"
           "        previous=${COMP_WORDS[COMP_CWORD - 2]}\n    fi\n"
           "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n"
           "        if [[ \" " +
           all +
           " \" == *\" $word \"* ]]; then\n            command=$word\n            break\n"
           "        fi\n    done\n    COMPREPLY=()\n    case \"$command $previous\" in\n" +
           values + "    esac\n    case $command in\n" + names + "    *) words=\"" + all + " " +
           joined(words_for_bash(words.program.options), " ") +
           "\" ;;\n    esac\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
           "    [[ $command && $current != -* && ${#COMPREPLY[@]} == 0 ]] && compopt -o default\n"
           "}\ncomplete -F _shader_export shader-export\n";
}

std::string zsh_action(const Option_words& option)
{
    const std::vector<std::string> choices = option.choices();
    if (!choices.empty())
        return "(" + joined(choices, " ") + ")";
    if (is_exporter(option))
        return "{compadd -- ${(f)\"$(" + std::string(exporter_names) + ")\"}}";
    return option.is_path() ? "_files" : "";
}

std::string zsh_value(const Option_words& option)
{
    return ":" + marked(option.value, ":[]\\", "\\") + ":" + zsh_action(option);
}

std::string zsh_option(const Option_words& option)
{
    if (option.is_argument)
        return single_quoted((option.is_repeated ? "*" : "") + zsh_value(option));
    std::string specs;
    for (const std::string& name : option.names) {
        const bool is_long = name.size() > 2;
        const std::string ending = option.value.empty() ? "" : is_long ? "=" : "+";
        specs += (specs.empty() ? "" : " ") +
                 single_quoted((option.is_repeated ? "*" : "") + name + ending + "[" +
                               marked(option.help, "[]\\", "\\") + "]" +
                               (option.value.empty() ? "" : zsh_value(option)));
    }
    return specs;
}

std::string zsh_script(const Program_words& words)
{
    std::string commands;
    std::string cases;
    for (const Command_words& command : words.commands) {
        commands +=
            "        " + single_quoted(marked(command.name, ":", "\\") + ":" + command.help) + "\n";
        cases += "        (" + command.name + ")\n            _arguments";
        for (const Option_words& option : all_options(words, command))
            cases += " \\\n                " + zsh_option(option);
        cases += "\n            ;;\n";
    }
    std::string shared;
    for (const Option_words& option : words.program.options)
        shared += "        " + zsh_option(option) + " \\\n";
    return "#compdef shader-export\n_shader_export()\n{\n    local -a commands\n"
           "    local context state state_descr line\n    typeset -A opt_args\n    commands=(\n" +
           commands + "    )\n    _arguments -C \\\n" + shared +
           "        '1:command:->command' '*::argument:->arguments'\n    case $state in\n"
           "    (command) _describe command commands ;;\n"
           "    (arguments)\n        case $words[1] in\n" +
           cases + "        esac\n        ;;\n    esac\n}\n_shader_export \"$@\"\n";
}

std::string fish_option(const Option_words& option, const std::string& condition)
{
    const std::vector<std::string> choices = option.choices();
    std::string text = "complete -c shader-export -n " + single_quoted(condition);
    if (option.is_argument)
        return text + (option.is_path() ? " -F" : " -f -a " + single_quoted(joined(choices, " "))) +
               "\n";
    for (const std::string& name : option.names)
        text += name.size() > 2 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.is_path())
        text += " -r -F";
    else if (!option.value.empty())
        text += " -x";
    if (!choices.empty())
        text += " -a " + single_quoted(joined(choices, " "));
    if (is_exporter(option))
        text += " -a \"(" + std::string(exporter_names) + ")\"";
    return text + " -d " + single_quoted(marked(option.help, "\\", "\\")) + "\n";
}

std::string fish_script(const Program_words& words)
{
    std::string text = "# fish completion for shader-export\ncomplete -c shader-export -f\n";
    for (const Command_words& command : words.commands)
        text += "complete -c shader-export -n '__fish_use_subcommand' -a " + command.name + " -d " +
                single_quoted(command.help) + "\n";
    for (const Option_words& option : words.program.options)
        text += fish_option(option, "__fish_use_subcommand");
    for (const Command_words& command : words.commands) {
        for (const Option_words& option : all_options(words, command))
            text += fish_option(option, "__fish_seen_subcommand_from " + command.name);
    }
    return text;
}

} // namespace

std::string completion_script(const Program_words& words, Shell shell)
{
    switch (shell) {
    case Shell::bash:
        return bash_script(words);
    case Shell::zsh:
        return zsh_script(words);
    case Shell::fish:
        break;
    }
    return fish_script(words);
}

} // namespace reference_host
