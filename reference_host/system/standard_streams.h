// The three descriptors that every program counts on.
#ifndef REFERENCE_HOST_SYSTEM_STANDARD_STREAMS_H
#define REFERENCE_HOST_SYSTEM_STANDARD_STREAMS_H

namespace reference_host
{

// Opens /dev/null in place of each standard stream that is closed, so that no file gets its number
// and with it what is meant for the terminal. Input stays unreadable and output unwritable, so that
// lost output is still noticed. Called before anything else.
void open_missing_standard_streams();

} // namespace reference_host

#endif
