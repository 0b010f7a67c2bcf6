// Runs an action at every event pass of DoEvents, then lets the real events
// run, for as long as the object lives: a test reaches into a busy poll or a
// run loop the way a user's click would.
#pragma once

#include "platform/DoEvents.h"

#include <QCoreApplication>
#include <functional>

struct DoEventsAction {
    explicit DoEventsAction(std::function<void()> action)
    {
        SetDoEventsHook([action] {
            action();
            QCoreApplication::processEvents();
        });
    }
    ~DoEventsAction() { SetDoEventsHook({}); }
    DoEventsAction(const DoEventsAction&) = delete;
    DoEventsAction& operator=(const DoEventsAction&) = delete;
};
