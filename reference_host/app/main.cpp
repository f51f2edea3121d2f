#include "reference_host/app/command_line.h"

int main(int argc, char** argv)
{
    return reference_host::run_command_line(argc, argv);
}
