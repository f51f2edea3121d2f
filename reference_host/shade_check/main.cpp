// shade_check FILE...: says what is wrong with files of shading text, one mistake on each line, in
// the way of compilers. Part of the build; status 1 when there is a mistake.
#include "reference_host/shade_check/shade_checker.h"

#include <deque>
#include <fstream>
#include <iostream>
#include <iterator>

int main(int argc, char** argv)
{
    std::deque<std::string> contents;
    std::vector<reference_host::Shade_text> files;
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        if (!file) {
            std::cerr << argv[i] << ":1: the file cannot be read\n";
            return 1;
        }
        contents.emplace_back(std::istreambuf_iterator<char>(file),
                              std::istreambuf_iterator<char>());
        files.push_back({contents.back(), {argv[i], 1}});
    }
    const std::vector<std::string> mistakes = reference_host::mistakes_in(files);
    for (const std::string& mistake : mistakes)
        std::cerr << mistake << "\n";
    return mistakes.empty() ? 0 : 1;
}
