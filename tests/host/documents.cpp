#include "tests/host/documents.h"

#include <fstream>
#include <iterator>

std::string document(const std::string& elements)
{
    return "<materialx version=\"1.39\" colorspace=\"lin_rec709\">\n" + elements +
           "\n</materialx>\n";
}

std::string read_file(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}
