// The forms in which options of the command line are declared.
#ifndef REFERENCE_HOST_APP_OPTION_FORMS_H
#define REFERENCE_HOST_APP_OPTION_FORMS_H

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

namespace reference_host
{

// An option that is given any number of times, each time with one value that `take` reads. `take`
// returns false, or throws, when it cannot.
template<typename Take>
void add_repeated(CLI::App& app, const char* names, const char* help, const char* form, Take take)
{
    app.add_option_function<std::vector<std::string>>(
           names,
           [take, names, form](const std::vector<std::string>& values) {
               for (const std::string& value : values) {
                   if (!take(value))
                       throw CLI::ValidationError(names, "'" + value + "' is not " + form);
               }
           },
           help)
        ->type_name(form)
        ->allow_extra_args(false);
}

// The same for an option that is given once.
template<typename Take>
void add_parsed(CLI::App& app, const char* names, const char* help, const char* form, Take take)
{
    app.add_option_function<std::string>(
           names,
           [take, names, form](const std::string& value) {
               if (!take(value))
                   throw CLI::ValidationError(names, "'" + value + "' is not " + form);
           },
           help)
        ->type_name(form);
}

// An option whose values are words. The first one is the default.
template<typename Choice>
void add_choice(CLI::App& app, const char* names, Choice& choice, const char* help,
                const std::vector<std::pair<std::string, Choice>>& words)
{
    std::string form;
    for (const auto& word : words)
        form += (form.empty() ? "" : "|") + word.first;
    app.add_option_function<std::string>(
           names,
           [&choice, words, names, form](const std::string& text) {
               for (const auto& [word, meaning] : words) {
                   if (word == text) {
                       choice = meaning;
                       return;
                   }
               }
               throw CLI::ValidationError(names, "'" + text + "' is not " + form);
           },
           help)
        ->type_name(form);
}

} // namespace reference_host

#endif
