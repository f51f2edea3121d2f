// What the tests of the host write and read.
#ifndef TESTS_HOST_DOCUMENTS_H
#define TESTS_HOST_DOCUMENTS_H

#include "tests/support/temporary_folder.h"

#include <string>

using QZ::TEST::Temporary_folder;

// A document of MaterialX 1.39 around its elements. The elements start in line 2.
std::string document(const std::string& elements);

// The whole content of a file; empty when it cannot be read.
std::string read_file(const std::string& path);

#endif
