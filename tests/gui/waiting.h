// Waiting for what a window does.
#ifndef TESTS_GUI_WAITING_H
#define TESTS_GUI_WAITING_H

#include <chrono>
#include <functional>

namespace QZ
{
namespace TEST
{

// Handles events until the condition holds; false when it does not within half a minute.
bool wait_until(const std::function<bool()>& condition,
                std::chrono::milliseconds patience = std::chrono::seconds(30));

// Handles the events that are there.
void handle_events();

} // namespace TEST
} // namespace QZ

#endif
