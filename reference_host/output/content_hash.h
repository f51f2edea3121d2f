// Fingerprints of contents, for telling whether something changed. Not for secrets.
#ifndef REFERENCE_HOST_OUTPUT_CONTENT_HASH_H
#define REFERENCE_HOST_OUTPUT_CONTENT_HASH_H

#include <string>
#include <string_view>

namespace reference_host
{

// 32 hexadecimal digits (XXH3, 128 bits).
std::string content_hash(std::string_view content);

// The hash of a file's content; empty when it is not a regular file or cannot be read.
std::string file_hash(const std::string& file);

} // namespace reference_host

#endif
