// Lets pending window events run once: the re-entry point of the busy polls
// and of the Play and Animate loops. A test may install a hook to count the
// calls or to act inside them.
#pragma once

#include <functional>

void DoEvents();

// Replaces what DoEvents does; an empty hook restores the real event pass.
// Returns the previous hook.
std::function<void()> SetDoEventsHook(std::function<void()> hook);
