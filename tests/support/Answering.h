// Runs an action with a script playing the user of every value dialog it opens.
#pragma once

#include "support/ui/ModalPlayer.h"

template <class Action>
void Answering(ModalHook script, Action action)
{
    ModalPlayer player(std::move(script));
    action();
}
