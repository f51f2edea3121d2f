// A folder with everything in it, described so that two looks can be compared.
#ifndef TESTS_HOST_FOLDER_TREE_H
#define TESTS_HOST_FOLDER_TREE_H

#include <map>
#include <string>

// What each thing in a folder is, by its path there: "folder", "link to X", "pipe"; of a file its
// time of change and what it holds. Nothing is followed. What `left_out` names is not looked into.
std::map<std::string, std::string> tree_of(const std::string& folder,
                                           const std::string& left_out = {});

#endif
